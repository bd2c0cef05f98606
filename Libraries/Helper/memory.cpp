#include "helper/algorithm/memory.h"

#include <cstring>

namespace Quorvane {
namespace Algorithm {

namespace {

// Taking the address makes the library carry one exported copy of the inline copy function.
[[maybe_unused]] __attribute__((used)) constexpr bool (*exported_hmi_memcpy_s)(
    void*, unsigned long, const void*, unsigned long) = &hmi_memcpy_s;

}  // namespace

bool hmi_memset_s(void* destination, unsigned long destination_size, int value,
                  unsigned long count) {
    if (destination == nullptr || memory_detail::has_top_bit(destination_size)) {
        return false;
    }
    const bool fits = count <= destination_size;
    std::memset(destination, value, fits ? count : destination_size);
    return fits;
}

void secure_zero_memory(void* pointer, unsigned long size) {
    volatile unsigned char* bytes = static_cast<volatile unsigned char*>(pointer);
    for (unsigned long i = 0; i < size; ++i) {
        bytes[i] = 0;
    }
}

std::pair<unsigned long, int> memory_compare(const void* a, const void* b, unsigned long size) {
    const auto* left = static_cast<const unsigned char*>(a);
    const auto* right = static_cast<const unsigned char*>(b);
    for (unsigned long i = 0; i < size; ++i) {
        if (left[i] != right[i]) {
            return {i, static_cast<int>(left[i]) - static_cast<int>(right[i])};
        }
    }
    return {0, 0};
}

}  // namespace Algorithm
}  // namespace Quorvane
