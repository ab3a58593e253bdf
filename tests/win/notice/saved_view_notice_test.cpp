// The saved views' notices reach the simulated driver's message box through the shim.
#include "client/detail/oxapp_shim.h"
#include "nav/saved_views.h"
#include "sim/driver/control_api_win32.h"
#include "sim/host/session.h"
#include "support/win32_handles.h"
#include "toolkit/host_table.h"

#include <gtest/gtest.h>

namespace {

std::wstring FullDriverFolder() {
    wchar_t exe[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    std::wstring folder(exe);
    folder.resize(folder.find_last_of(L'\\') + 1);
    return folder + L"simdriver\\full";
}

TEST(SavedViewNoticeTest, StoreAndEmptySlotAreShownByTheDriver) {
    ovklib::CModuleHandle driver(LoadLibraryW((FullDriverFolder() + L"\\oxappdll.dll").c_str()));
    qvx::simdriver::CSimDriverControl control;
    ASSERT_TRUE(driver && control.Bind(driver.Get()));
    control.SimDriverReset();
    SetDllDirectoryW(FullDriverFolder().c_str());
    sim::CSession& host = sim::CSession::Instance();
    host.Reset();
    host.OpenModel("bracket.prt");
    qvx::toolkit::InstallHostTable(host.Args());

    qvx::nav::ViewRetrieve("Quorvex V1");
    EXPECT_EQ(control.Record("message-box"), "STR_HINT | STR_HOLD_TO_SAVE | 2");
    qvx::nav::ViewStore("Quorvex V2");
    EXPECT_EQ(control.Record("message-box"), "STR_HINT | Quorvex V2 saved | 1");

    if (g_loadState == kOxLoaded) OxTerminate();
    qvx::toolkit::InstallHostTable(nullptr);
    SetDllDirectoryW(nullptr);
}

}  // namespace
