// The handles that the runtime linked into this DLL opens and never closes: the thread
// library's copy of the handle of every thread of the host that it served, with the event
// beside it, and the two semaphores of the condition inside the lock of its key table. The
// plug-in's own code opens none of its handles through these three functions; every handle
// they give is recorded here, and the ones still open at unload are closed.
//
// The imports are replaced by defining the pointers the linker would otherwise take from the
// system's import library; nothing in here may call the four functions by name.
#include "core/dll/runtime_handles.h"

#include "core/dll/kernel_function_win32.h"
#include "support/windows_api.h"

#include <atomic>

namespace {

using CreateEventFunction = HANDLE(WINAPI*)(LPSECURITY_ATTRIBUTES, BOOL, BOOL, LPCSTR);
using CreateSemaphoreFunction = HANDLE(WINAPI*)(LPSECURITY_ATTRIBUTES, LONG, LONG, LPCSTR);
using DuplicateFunction = BOOL(WINAPI*)(HANDLE, HANDLE, HANDLE, LPHANDLE, DWORD, BOOL, DWORD);
using CloseFunction = BOOL(WINAPI*)(HANDLE);

/// Open handles; null marks a free entry. A condition holds two, a thread served two.
constexpr int kRecorded = 1024;
std::atomic<HANDLE> g_handles[kRecorded];

HANDLE Record(HANDLE handle) {
    if (!handle || handle == INVALID_HANDLE_VALUE) return handle;
    for (auto& entry : g_handles) {
        HANDLE empty = nullptr;
        if (!entry.load(std::memory_order_relaxed) && entry.compare_exchange_strong(empty, handle))
            break;
    }
    // More handles than entries: the rest are left as they would be without this.
    return handle;
}

HANDLE WINAPI RecordedCreateEvent(LPSECURITY_ATTRIBUTES security, BOOL manual, BOOL set,
                                  LPCSTR name) {
    auto create = qvx::core::KernelFunction<CreateEventFunction>("CreateEventA");
    return create ? Record(create(security, manual, set, name)) : nullptr;
}

HANDLE WINAPI RecordedCreateSemaphore(LPSECURITY_ATTRIBUTES security, LONG initial, LONG most,
                                      LPCSTR name) {
    auto create = qvx::core::KernelFunction<CreateSemaphoreFunction>("CreateSemaphoreA");
    return create ? Record(create(security, initial, most, name)) : nullptr;
}

BOOL WINAPI RecordedDuplicate(HANDLE sourceProcess, HANDLE source, HANDLE targetProcess,
                              LPHANDLE target, DWORD access, BOOL inherit, DWORD options) {
    auto duplicate = qvx::core::KernelFunction<DuplicateFunction>("DuplicateHandle");
    if (!duplicate) return FALSE;
    const BOOL done =
        duplicate(sourceProcess, source, targetProcess, target, access, inherit, options);
    // Only a copy into this process is this process's to close.
    if (done && target && GetProcessId(targetProcess) == GetCurrentProcessId()) Record(*target);
    return done;
}

BOOL WINAPI RecordedClose(HANDLE handle) {
    if (handle) {
        for (auto& entry : g_handles) {
            HANDLE held = handle;
            if (entry.load(std::memory_order_relaxed) == handle &&
                entry.compare_exchange_strong(held, nullptr))
                break;
        }
    }
    auto close = qvx::core::KernelFunction<CloseFunction>("CloseHandle");
    return close ? close(handle) : FALSE;
}

}  // namespace

namespace qvx::core {

void CloseKeptHandles() {
    auto close = qvx::core::KernelFunction<CloseFunction>("CloseHandle");
    if (!close) return;
    for (auto& entry : g_handles) {
        if (HANDLE handle = entry.exchange(nullptr)) close(handle);
    }
}

}  // namespace qvx::core

// The import pointers of this DLL for the four functions (32-bit names carry the decoration).
#ifdef _WIN64
extern "C" CreateEventFunction qvx_imp_CreateEventA __asm__("__imp_CreateEventA");
extern "C" CreateSemaphoreFunction qvx_imp_CreateSemaphoreA __asm__("__imp_CreateSemaphoreA");
extern "C" DuplicateFunction qvx_imp_DuplicateHandle __asm__("__imp_DuplicateHandle");
extern "C" CloseFunction qvx_imp_CloseHandle __asm__("__imp_CloseHandle");
#else
extern "C" CreateEventFunction qvx_imp_CreateEventA __asm__("__imp__CreateEventA@16");
extern "C" CreateSemaphoreFunction qvx_imp_CreateSemaphoreA __asm__("__imp__CreateSemaphoreA@16");
extern "C" DuplicateFunction qvx_imp_DuplicateHandle __asm__("__imp__DuplicateHandle@28");
extern "C" CloseFunction qvx_imp_CloseHandle __asm__("__imp__CloseHandle@4");
#endif
CreateEventFunction qvx_imp_CreateEventA = &RecordedCreateEvent;
CreateSemaphoreFunction qvx_imp_CreateSemaphoreA = &RecordedCreateSemaphore;
DuplicateFunction qvx_imp_DuplicateHandle = &RecordedDuplicate;
CloseFunction qvx_imp_CloseHandle = &RecordedClose;
