// Counts every allocation of the program that includes this header, for benchmarks that report
// allocations per operation. Include it in exactly one file of a program: it replaces the
// global operator new and delete.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace qvx::bench {

inline std::atomic<std::uint64_t> g_allocations{0};

}  // namespace qvx::bench

// The pair must stay malloc and free, which the compiler cannot see through the replacement.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void* operator new(std::size_t size) {
    ++qvx::bench::g_allocations;
    if (void* block = std::malloc(size ? size : 1)) return block;
    throw std::bad_alloc();
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
#pragma GCC diagnostic pop
