// The plug-in's operator new with a probe for fault-injection runs. The simulated host arms
// the probe through QvxTestArmAllocationFault before it starts the plug-in: from then on every
// allocation of the plug-in (on any of its threads, all of which run inside its entry points)
// is counted, and the one numbered as asked throws std::bad_alloc, so a run can prove that an
// allocation failing anywhere stops at a boundary. Unarmed, an allocation costs one relaxed
// load more than malloc. The DLL links its C++ runtime statically, so this definition serves
// every allocation made by the plug-in's code and none made by its host.
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <new>

/// The DLL's load address, from the linker.
extern "C" char __ImageBase;

namespace {

std::atomic<bool> g_armed{false};
std::atomic<std::uint64_t> g_count{0};
std::atomic<std::uint64_t> g_failAt{0};

void* Allocate(std::size_t size, const void* caller) {
    if (g_armed.load(std::memory_order_relaxed)) {
        std::uint64_t number = g_count.fetch_add(1, std::memory_order_relaxed) + 1;
        if (number == g_failAt.load(std::memory_order_relaxed)) {
            // Where it failed, as an offset into the DLL for addr2line, on standard error.
            std::fprintf(
                stderr, "allocation %llu throws, called from the DLL's offset %#llx\n",
                static_cast<unsigned long long>(number),
                static_cast<unsigned long long>(static_cast<const char*>(caller) - &__ImageBase));
            throw std::bad_alloc();
        }
    }
    if (size == 0) size = 1;
    for (;;) {
        if (void* block = std::malloc(size)) return block;
        std::new_handler handler = std::get_new_handler();
        if (!handler) throw std::bad_alloc();
        handler();
    }
}

void* AllocateNoThrow(std::size_t size, const void* caller) noexcept {
    try {
        return Allocate(size, caller);
    } catch (...) {
        return nullptr;
    }
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size, __builtin_return_address(0)); }
void* operator new[](std::size_t size) { return Allocate(size, __builtin_return_address(0)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return AllocateNoThrow(size, __builtin_return_address(0));
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return AllocateNoThrow(size, __builtin_return_address(0));
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { std::free(block); }

/// Counts the plug-in's allocations from now on; the `failAt`th throws (0: none does).
extern "C" __declspec(dllexport) void QvxTestArmAllocationFault(std::uint64_t failAt) {
    g_count.store(0, std::memory_order_relaxed);
    g_failAt.store(failAt, std::memory_order_relaxed);
    g_armed.store(true, std::memory_order_release);
}

/// Stops counting; how many allocations were counted since the probe was armed.
extern "C" __declspec(dllexport) std::uint64_t QvxTestAllocationsCounted() {
    g_armed.store(false, std::memory_order_release);
    return g_count.load(std::memory_order_relaxed);
}
