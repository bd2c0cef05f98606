#pragma once
// Checked memory operations: bounds are passed explicitly and a refused call reports false instead
// of aborting, so a caller can copy into fixed buffers without trusting its own arithmetic.
// None of them throws.

#include <cstdint>
#include <cstring>
#include <utility>

#include "helper/crosscompile.h"

namespace Quorvane {
namespace Algorithm {

// Helpers of the inline functions below; not part of the API.
namespace memory_detail {

// A size with its top bit set is almost always a negative length that went through a cast.
inline bool has_top_bit(unsigned long size) {
    return (size & ~(~0UL >> 1)) != 0;
}

// Whether `inner` lies in the `length` bytes that start at `outer`. Addresses are compared as
// integers because the two pointers need not point into the same object.
inline bool starts_inside(const void* inner, const void* outer, unsigned long length) {
    const auto inner_address = reinterpret_cast<std::uintptr_t>(inner);
    const auto outer_address = reinterpret_cast<std::uintptr_t>(outer);
    return inner_address >= outer_address && inner_address - outer_address < length;
}

}  // namespace memory_detail

// Fills min(count, destination_size) bytes of `destination` with `value` (converted to a byte).
// False without writing when `destination` is null or `destination_size` has its top bit set (a
// negative size that was cast to unsigned). Otherwise false also when `count` exceeded
// `destination_size`: the destination is then filled completely and the short fill is reported.
QUORVANE_API bool hmi_memset_s(void* destination, unsigned long destination_size, int value,
                               unsigned long count);

// Copies `count` bytes from `source` to `destination` and gives true. Gives false and copies
// nothing when `count` exceeds `destination_size`, a pointer is null, `count` or
// `destination_size` has its top bit set, the destination starts inside the `count` bytes at
// `source`, or the source starts inside the whole `destination_size` bytes at `destination`:
// the entire destination buffer is protected from overlap, not only the bytes written.
// Inline, so that a copy of a few bytes into a fixed buffer costs a few instructions; the library
// also exports it for callers that link against the symbol.
QUORVANE_API inline bool hmi_memcpy_s(void* destination, unsigned long destination_size,
                                      const void* source, unsigned long count) {
    using memory_detail::has_top_bit;
    using memory_detail::starts_inside;
    if (count > destination_size || destination == nullptr || source == nullptr ||
        has_top_bit(count) || has_top_bit(destination_size) ||
        starts_inside(destination, source, count) ||
        starts_inside(source, destination, destination_size)) {
        return false;
    }
    // The areas cannot overlap here; memmove only spares callers whose constant arguments overlap
    // a warning about the refused path, which compilers cannot always see is never taken.
    std::memmove(destination, source, count);
    return true;
}

// Overwrites `size` bytes with zero through volatile byte stores, so that clearing a secret just
// before the buffer dies is not removed by the optimiser. A null pointer is allowed only with size
// 0.
QUORVANE_API void secure_zero_memory(void* pointer, unsigned long size);

// Compares `size` bytes of `a` and `b`. At the first differing byte, answers its index and the
// difference of the two bytes as unsigned values (a's minus b's, -255 to 255); equal areas and
// size 0 answer {0, 0}. Stops at the first difference, so it is not constant-time: do not use it
// to compare secrets.
QUORVANE_API std::pair<unsigned long, int> memory_compare(const void* a, const void* b,
                                                          unsigned long size);

}  // namespace Algorithm
}  // namespace Quorvane
