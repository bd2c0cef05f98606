#pragma once
// The checked file-open and calendar-conversion calls under the names that portable host and
// extension code already uses for them, implemented on the POSIX system library. They live in the
// global namespace so that such code compiles unchanged.

#include <cstdio>
#include <ctime>

#include "helper/crosscompile.h"

// Opens `path` with `mode` through fopen and stores the stream, or null, in `*file`. Answers 0 on
// success and the errno of the failure otherwise. The caller owns the stream and closes it with
// fclose. `file`, `path` and `mode` must not be null.
QUORVANE_API int fopen_s(std::FILE** file, const char* path, const char* mode);

// Breaks the seconds since the Unix epoch at `*time` into UTC calendar fields in `*result`
// (destination first). Answers 0 on success and 1 when the year does not fit. Re-entrant: it uses
// no shared buffer. Neither pointer may be null.
QUORVANE_API int gmtime_s(std::tm* result, const long* time);
