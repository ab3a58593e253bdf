// The critical sections that the runtime linked into this DLL makes in memory it allocated and
// never deletes: the thread library's condition inside the lock of its key table is one, made
// on the first thread-local variable. Each holds a record the system allocated for it, which
// outlives the DLL's heap. Every critical section made through this DLL's imports is recorded
// here, and at unload those still alive outside the DLL's image are deleted. The ones inside
// the image belong to the runtime's start and end code, which deletes them itself.
//
// The imports are replaced by defining the pointers the linker would otherwise take from the
// system's import library; nothing in here may call the three functions by name.
#include "core/dll/runtime_locks.h"

#include "core/dll/kernel_function_win32.h"
#include "support/windows_api.h"

#include <atomic>
#include <cstdint>

namespace {

using InitializeFunction = void(WINAPI*)(LPCRITICAL_SECTION);
using InitializeSpinFunction = BOOL(WINAPI*)(LPCRITICAL_SECTION, DWORD);
using DeleteFunction = void(WINAPI*)(LPCRITICAL_SECTION);

/// A live critical section, and the system's record of it as it was made. A section whose
/// memory was freed without deleting it may since hold anything; it is deleted only while its
/// record still points at it and back.
struct Entry {
    std::atomic<LPCRITICAL_SECTION> section{nullptr};
    PRTL_CRITICAL_SECTION_DEBUG record = nullptr;
};
constexpr int kRecorded = 256;
Entry g_entries[kRecorded];

void Record(LPCRITICAL_SECTION section) {
    for (auto& entry : g_entries) {
        LPCRITICAL_SECTION empty = nullptr;
        if (!entry.section.load(std::memory_order_relaxed) &&
            entry.section.compare_exchange_strong(empty, section)) {
            entry.record = section->DebugInfo;
            return;
        }
    }
    // More sections than entries: the rest are left as they would be without this.
}

void Forget(LPCRITICAL_SECTION section) {
    for (auto& entry : g_entries) {
        LPCRITICAL_SECTION held = section;
        if (entry.section.load(std::memory_order_relaxed) == section &&
            entry.section.compare_exchange_strong(held, nullptr))
            return;
    }
}

void WINAPI RecordedInitialize(LPCRITICAL_SECTION section) {
    if (auto initialize =
            qvx::core::KernelFunction<InitializeFunction>("InitializeCriticalSection")) {
        initialize(section);
        Record(section);
    }
}

BOOL WINAPI RecordedInitializeSpin(LPCRITICAL_SECTION section, DWORD spinCount) {
    auto initialize =
        qvx::core::KernelFunction<InitializeSpinFunction>("InitializeCriticalSectionAndSpinCount");
    if (!initialize || !initialize(section, spinCount)) return FALSE;
    Record(section);
    return TRUE;
}

void WINAPI RecordedDelete(LPCRITICAL_SECTION section) {
    Forget(section);
    if (auto remove = qvx::core::KernelFunction<DeleteFunction>("DeleteCriticalSection"))
        remove(section);
}

bool InImage(const void* address) {
    HMODULE self = nullptr;
    if (!GetModuleHandleExW(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<LPCWSTR>(&g_entries), &self))
        return true;  // unknown: leave it alone
    const auto* base = reinterpret_cast<const char*>(self);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto offset = static_cast<const char*>(address) - base;
    return offset >= 0 && static_cast<std::uintptr_t>(offset) < nt->OptionalHeader.SizeOfImage;
}

bool Readable(const void* address, std::size_t size) {
    MEMORY_BASIC_INFORMATION region{};
    if (!VirtualQuery(address, &region, sizeof region) || region.State != MEM_COMMIT) return false;
    if (region.Protect & (PAGE_NOACCESS | PAGE_GUARD)) return false;
    const auto end = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
    return static_cast<const char*>(address) + size <= end;
}

}  // namespace

namespace qvx::core {

void DeleteKeptLocks() {
    for (auto& entry : g_entries) {
        LPCRITICAL_SECTION section = entry.section.exchange(nullptr);
        if (!section || InImage(section) || !Readable(section, sizeof *section)) continue;
        PRTL_CRITICAL_SECTION_DEBUG record = entry.record;
        if (!record || record == reinterpret_cast<PRTL_CRITICAL_SECTION_DEBUG>(-1)) continue;
        if (section->DebugInfo != record || record->CriticalSection != section) continue;
        RecordedDelete(section);
    }
}

}  // namespace qvx::core

// The import pointers of this DLL for the three functions (32-bit names carry the decoration).
#ifdef _WIN64
extern "C" InitializeFunction qvx_imp_Initialize __asm__("__imp_InitializeCriticalSection");
extern "C" InitializeSpinFunction qvx_imp_InitializeSpin __asm__(
    "__imp_InitializeCriticalSectionAndSpinCount");
extern "C" DeleteFunction qvx_imp_Delete __asm__("__imp_DeleteCriticalSection");
#else
extern "C" InitializeFunction qvx_imp_Initialize __asm__("__imp__InitializeCriticalSection@4");
extern "C" InitializeSpinFunction qvx_imp_InitializeSpin __asm__(
    "__imp__InitializeCriticalSectionAndSpinCount@8");
extern "C" DeleteFunction qvx_imp_Delete __asm__("__imp__DeleteCriticalSection@4");
#endif
InitializeFunction qvx_imp_Initialize = &RecordedInitialize;
InitializeSpinFunction qvx_imp_InitializeSpin = &RecordedInitializeSpin;
DeleteFunction qvx_imp_Delete = &RecordedDelete;
