// The plug-in DLL loaded, started, stopped and freed again and again in one process, as a host
// may do: it gives back the process-wide resources it took.
#include "sim/host/session.h"
#include "support/os.h"
#include "support/win32_handles.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace qvx::core {
namespace {

/// The lowest thread-local storage slot free in this process.
DWORD LowestFreeSlot() {
    DWORD slot = TlsAlloc();
    if (slot != TLS_OUT_OF_INDEXES) TlsFree(slot);
    return slot;
}

/// The handle the process would be given next: the lowest free one.
std::uintptr_t NextHandle() {
    HANDLE probe = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    if (probe) CloseHandle(probe);
    return reinterpret_cast<std::uintptr_t>(probe);
}

/// Bytes in use in all the process's heaps.
std::size_t HeapBytesInUse() {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count && i < 64; ++i) {
        if (!HeapLock(heaps[i])) continue;
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

/// One load, start, stop and unload of the DLL, with a thread of its own started in between
/// (the settings are saved on one), as the host's menu or a driver connection would.
bool Cycle() {
    ovklib::CModuleHandle dll(LoadLibraryW(os::WidenUtf8(QVX_PLUGIN_DLL).c_str()));
    if (!dll) return false;
    auto init = reinterpret_cast<int (*)(const QvxToolkitArgs*)>(
        reinterpret_cast<void*>(GetProcAddress(dll.Get(), "user_initialize_plus")));
    auto term = reinterpret_cast<void (*)()>(
        reinterpret_cast<void*>(GetProcAddress(dll.Get(), "user_terminate_plus")));
    if (!init || !term) return false;
    init(sim::CSession::Instance().Args());
    term();
    sim::CSession::Instance().notifications.clear();
    return true;
}

TEST(DllUnloadTest, LoadsAndUnloadsLeaveNoThreadStorageSlotTaken) {
    sim::CSession::Instance().Reset();
    ASSERT_TRUE(Cycle());
    const DWORD before = LowestFreeSlot();
    for (int i = 0; i < 5; ++i) ASSERT_TRUE(Cycle());
    EXPECT_EQ(LowestFreeSlot(), before)
        << "a process has 1,088 slots: a slot kept per load ends the host after as many loads";
}

TEST(DllUnloadTest, LoadsAndUnloadsLeaveNoHandleOpen) {
    sim::CSession::Instance().Reset();
    ASSERT_TRUE(Cycle());
    const std::uintptr_t before = NextHandle();
    for (int i = 0; i < 5; ++i) ASSERT_TRUE(Cycle());
    // The thread library keeps a copy of the handle of each thread it served, with an event,
    // and two semaphores of its own; the multimedia library, unloaded, left registry keys.
    EXPECT_EQ(NextHandle(), before);
}

TEST(DllUnloadTest, LoadsAndUnloadsLeaveNoMemoryBehind) {
    sim::CSession::Instance().Reset();
    ASSERT_TRUE(Cycle());
    const std::size_t before = HeapBytesInUse();
    constexpr int kCycles = 10;
    for (int i = 0; i < kCycles; ++i) ASSERT_TRUE(Cycle());
    const std::size_t after = HeapBytesInUse();
    // The runtime linked into the DLL keeps some 1.5 KB for each thread that called into it;
    // the DLL gives back its heap with them at unload.
    EXPECT_LT(after, before + 64 * kCycles) << "in use before " << before << ", after " << after;
}

}  // namespace
}  // namespace qvx::core
