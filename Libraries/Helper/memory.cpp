#include "helper/algorithm/memory.h"

#include <cstdint>
#include <cstring>

namespace Quorvane {
namespace Algorithm {

namespace {

// A size with its top bit set is almost always a negative length that went through a cast.
constexpr unsigned long top_bit = ~(~0UL >> 1);

bool has_top_bit(unsigned long size) {
    return (size & top_bit) != 0;
}

// Whether `inner` lies in the `length` bytes that start at `outer`. Addresses are compared as
// integers because the two pointers need not point into the same object.
bool starts_inside(const void* inner, const void* outer, unsigned long length) {
    const auto inner_address = reinterpret_cast<std::uintptr_t>(inner);
    const auto outer_address = reinterpret_cast<std::uintptr_t>(outer);
    return inner_address >= outer_address && inner_address - outer_address < length;
}

}  // namespace

bool hmi_memset_s(void* destination, unsigned long destination_size, int value,
                  unsigned long count) {
    if (destination == nullptr || has_top_bit(destination_size)) {
        return false;
    }
    const bool fits = count <= destination_size;
    std::memset(destination, value, fits ? count : destination_size);
    return fits;
}

bool hmi_memcpy_s(void* destination, unsigned long destination_size, const void* source,
                  unsigned long count) {
    if (count > destination_size || destination == nullptr || source == nullptr ||
        has_top_bit(count) || has_top_bit(destination_size) ||
        starts_inside(destination, source, count) ||
        starts_inside(source, destination, destination_size)) {
        return false;
    }
    std::memcpy(destination, source, count);
    return true;
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
