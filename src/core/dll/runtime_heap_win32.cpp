// The C runtime allocations of this DLL come from a heap of its own, destroyed when the DLL is
// unloaded. The runtime linked into the DLL keeps small blocks for the life of the host's
// threads that ever called into it: the thread library's record of a thread it did not start,
// its key table and locks, the runtime's thread-local variables, the guard lock of function
// statics. None is ever freed, and a host may load and unload the plug-in many times in one
// process; destroying the heap gives them all back at once.
//
// The link sends every malloc, calloc, realloc and free of the DLL here (--wrap). Each block
// carries a stamp before it, so a block that the system's runtime allocated for the DLL (a
// duplicated string, the working folder) is told apart and goes back to that runtime.
#include "core/dll/runtime_heap.h"

#include "support/windows_api.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);
}

namespace {

/// What precedes every block: keeps the blocks aligned as the system's runtime does.
struct alignas(16) Stamp {
    std::uintptr_t mark;
};
constexpr std::size_t kStamp = sizeof(Stamp);
constexpr std::uintptr_t kMarkKey = 0x51767848'65617021ull & UINTPTR_MAX;

std::atomic<HANDLE> g_heap{nullptr};
/// Set once the heap is destroyed: nothing of the DLL runs any more but the runtime's own
/// last frees, which have nothing left to give back.
std::atomic<bool> g_destroyed{false};

std::uintptr_t MarkOf(const void* block) {
    return reinterpret_cast<std::uintptr_t>(block) ^ kMarkKey;
}

/// The heap, made by the first allocation; null when it could not be made or is gone.
HANDLE Heap() {
    HANDLE heap = g_heap.load(std::memory_order_acquire);
    if (heap || g_destroyed.load(std::memory_order_acquire)) return heap;
    HANDLE made = HeapCreate(0, 0, 0);
    if (!made) return nullptr;
    if (g_heap.compare_exchange_strong(heap, made, std::memory_order_acq_rel)) return made;
    HeapDestroy(made);
    return heap;
}

void* Marked(void* raw) {
    if (!raw) return nullptr;
    void* block = static_cast<Stamp*>(raw) + 1;
    static_cast<Stamp*>(raw)->mark = MarkOf(block);
    return block;
}

Stamp* StampOf(void* block) { return static_cast<Stamp*>(block) - 1; }

bool Owned(void* block) { return StampOf(block)->mark == MarkOf(block); }

void* Allocate(HANDLE heap, std::size_t size, DWORD flags) {
    if (size > SIZE_MAX - kStamp) return nullptr;
    return Marked(HeapAlloc(heap, flags, size + kStamp));
}

}  // namespace

extern "C" void* __wrap_malloc(std::size_t size) {
    HANDLE heap = Heap();
    return heap ? Allocate(heap, size, 0) : __real_malloc(size);
}

extern "C" void* __wrap_calloc(std::size_t count, std::size_t size) {
    HANDLE heap = Heap();
    if (!heap) return __real_calloc(count, size);
    if (size != 0 && count > SIZE_MAX / size) return nullptr;
    return Allocate(heap, count * size, HEAP_ZERO_MEMORY);
}

extern "C" void __wrap_free(void* block) {
    if (!block || g_destroyed.load(std::memory_order_acquire)) return;
    HANDLE heap = g_heap.load(std::memory_order_acquire);
    if (!heap || !Owned(block)) return __real_free(block);
    StampOf(block)->mark = 0;
    HeapFree(heap, 0, StampOf(block));
}

extern "C" void* __wrap_realloc(void* block, std::size_t size) {
    if (!block) return __wrap_malloc(size);
    // Once the heap is gone its blocks cannot be read: the old block stays, as on a failure.
    if (g_destroyed.load(std::memory_order_acquire)) return nullptr;
    HANDLE heap = g_heap.load(std::memory_order_acquire);
    if (!heap || !Owned(block)) return __real_realloc(block, size);
    if (size == 0) {
        __wrap_free(block);
        return nullptr;
    }
    if (size > SIZE_MAX - kStamp) return nullptr;
    // The old block stays as it was when this fails, as realloc promises.
    return Marked(HeapReAlloc(heap, 0, StampOf(block), size + kStamp));
}

namespace qvx::core {

void DestroyRuntimeHeap() {
    // When the process itself ends, its other threads were stopped wherever they were, maybe
    // inside the heap; the system takes back everything anyway.
    using ShutdownFunction = BOOLEAN(WINAPI*)();
    HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    auto shuttingDown = ntdll ? reinterpret_cast<ShutdownFunction>(reinterpret_cast<void*>(
                                    GetProcAddress(ntdll, "RtlDllShutdownInProgress")))
                              : nullptr;
    if (shuttingDown && shuttingDown()) return;
    g_destroyed.store(true, std::memory_order_release);
    HANDLE heap = g_heap.exchange(nullptr, std::memory_order_acq_rel);
    if (heap) HeapDestroy(heap);
}

}  // namespace qvx::core
