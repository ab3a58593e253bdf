// What the runtime linked into this DLL keeps for the life of the process, given back when the
// DLL is unloaded, after its static destructors: a host may load and unload the plug-in many
// times in one process.
//
// - Thread-local storage slots: the thread library takes one the first time it serves a thread
//   and never frees it; a process has 1,088. Every slot taken through this DLL's import of
//   TlsAlloc is recorded here and freed. The import is replaced by defining the pointer the
//   linker would otherwise take from the system's import library; nothing in here may call
//   TlsAlloc or TlsFree by name (that would come back here) or use the thread library (it may
//   be what is calling).
// - The C++ runtime's emergency pool for exceptions thrown when memory has run out, some 73 KB
//   taken at the DLL's start and otherwise never freed.
// - The handles it opened and never closed (runtime_handles_win32.cpp).
// - The critical sections it made in memory of its own and never deleted
//   (runtime_locks_win32.cpp).
// - The heap of the DLL's C runtime allocations, with the small blocks the runtime keeps for
//   every thread that called into it (runtime_heap_win32.cpp).
#include "core/dll/runtime_handles.h"
#include "core/dll/runtime_heap.h"
#include "core/dll/runtime_locks.h"
#include "core/dll/kernel_function_win32.h"
#include "support/windows_api.h"

#include <atomic>
#include <cstdlib>

namespace __gnu_cxx {
// The C++ runtime's own release of its emergency exception pool.
void __freeres();
}  // namespace __gnu_cxx

namespace {

using TlsAllocFunction = DWORD(WINAPI*)();
using TlsFreeFunction = BOOL(WINAPI*)(DWORD);

/// Slots held; TLS_OUT_OF_INDEXES marks a free entry. The thread library takes one.
constexpr int kRecorded = 8;
std::atomic<DWORD> g_slots[kRecorded] = {TLS_OUT_OF_INDEXES, TLS_OUT_OF_INDEXES, TLS_OUT_OF_INDEXES,
                                         TLS_OUT_OF_INDEXES, TLS_OUT_OF_INDEXES, TLS_OUT_OF_INDEXES,
                                         TLS_OUT_OF_INDEXES, TLS_OUT_OF_INDEXES};

DWORD WINAPI RecordedTlsAlloc() {
    auto allocate = qvx::core::KernelFunction<TlsAllocFunction>("TlsAlloc");
    if (!allocate) return TLS_OUT_OF_INDEXES;
    const DWORD slot = allocate();
    if (slot == TLS_OUT_OF_INDEXES) return slot;
    for (auto& entry : g_slots) {
        DWORD free = TLS_OUT_OF_INDEXES;
        if (entry.compare_exchange_strong(free, slot)) break;
    }
    // More slots than entries: the rest stay taken, as they would without this.
    return slot;
}

BOOL WINAPI RecordedTlsFree(DWORD slot) {
    for (auto& entry : g_slots) {
        DWORD held = slot;
        if (entry.compare_exchange_strong(held, TLS_OUT_OF_INDEXES)) break;
    }
    auto release = qvx::core::KernelFunction<TlsFreeFunction>("TlsFree");
    return release ? release(slot) : FALSE;
}

void ReleaseAtUnload() {
    for (auto& entry : g_slots) {
        const DWORD slot = entry.exchange(TLS_OUT_OF_INDEXES);
        if (slot != TLS_OUT_OF_INDEXES) RecordedTlsFree(slot);
    }
    __gnu_cxx::__freeres();
    qvx::core::CloseKeptHandles();
    qvx::core::DeleteKeptLocks();
    qvx::core::DestroyRuntimeHeap();
}

// Registered before any static object of the DLL exists, so it runs after all their
// destructors when the DLL is unloaded.
__attribute__((constructor(101))) void RegisterReleaseAtUnload() { std::atexit(&ReleaseAtUnload); }

}  // namespace

// The import pointers of this DLL for the two functions (32-bit names carry the decoration).
#ifdef _WIN64
extern "C" TlsAllocFunction qvx_imp_TlsAlloc __asm__("__imp_TlsAlloc");
extern "C" TlsFreeFunction qvx_imp_TlsFree __asm__("__imp_TlsFree");
#else
extern "C" TlsAllocFunction qvx_imp_TlsAlloc __asm__("__imp__TlsAlloc@0");
extern "C" TlsFreeFunction qvx_imp_TlsFree __asm__("__imp__TlsFree@4");
#endif
TlsAllocFunction qvx_imp_TlsAlloc = &RecordedTlsAlloc;
TlsFreeFunction qvx_imp_TlsFree = &RecordedTlsFree;
