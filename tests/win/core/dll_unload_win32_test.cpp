// The plug-in DLL loaded, started, stopped and freed again and again in one process, as a host
// may do: it gives back the process-wide resources it took.
#include "sim/host/session.h"
#include "support/os.h"
#include "support/win32_handles.h"

#include <gtest/gtest.h>

namespace qvx::core {
namespace {

/// The lowest thread-local storage slot free in this process.
DWORD LowestFreeSlot() {
    DWORD slot = TlsAlloc();
    if (slot != TLS_OUT_OF_INDEXES) TlsFree(slot);
    return slot;
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

}  // namespace
}  // namespace qvx::core
