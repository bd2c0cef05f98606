#include "helper/linux.h"

#include <cerrno>

#include <time.h>

int fopen_s(std::FILE** file, const char* path, const char* mode) {
    *file = std::fopen(path, mode);
    return *file == nullptr ? errno : 0;
}

int gmtime_s(std::tm* result, const long* time) {
    const std::time_t seconds = *time;
    return gmtime_r(&seconds, result) == nullptr ? 1 : 0;
}
