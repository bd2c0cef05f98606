#pragma once
// Counts the allocations of the current thread, for holding code to the number of allocations it
// promises. Include it in one test source only: it replaces the global allocation functions of
// the whole test program, and the library's allocations reach them too. Kept out of line, so
// that the compiler does not pair an inlined free with the new expressions it sees.

#include <cstddef>
#include <cstdlib>
#include <new>

namespace allocation_count {

inline thread_local std::size_t count = 0;

// The allocations that `work` makes on this thread.
template <class Work>
std::size_t of(Work work) {
    const std::size_t before = count;
    work();
    return count - before;
}

}  // namespace allocation_count

__attribute__((noinline)) void* operator new(std::size_t size) {
    ++allocation_count::count;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

__attribute__((noinline)) void operator delete(void* memory) noexcept {
    std::free(memory);
}

__attribute__((noinline)) void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
