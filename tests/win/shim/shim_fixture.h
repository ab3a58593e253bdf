// The shim against the simulated driver library. The library and its variants are built
// beside this program under simdriver/<variant>/, away from every folder that Windows
// searches, so a test finds a library only when it puts one on the path or holds one.
#pragma once

#include "client/detail/oxapp_shim.h"
#include "sim/driver/control_api_win32.h"
#include "support/win32_handles.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace qvx::testing {

/// The folder of a variant: "full", "no-optional", "no-required", "no-error-variable".
inline std::wstring SimDriverFolder(const wchar_t* variant) {
    wchar_t exe[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    std::wstring folder(exe);
    folder.resize(folder.find_last_of(L'\\') + 1);
    return folder + L"simdriver\\" + variant;
}

class ShimTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(GetModuleHandleW(L"oxappdll.dll"), nullptr); }

    void TearDown() override {
        if (g_loadState == kOxLoaded) OxTerminate();
        m_held.Reset();
        // A failed load leaves the library with the shim's reference; let every one go, so
        // that the next test starts without a library in the process.
        for (int i = 0; i < 100 && GetModuleHandleW(L"oxappdll.dll"); ++i) {
            FreeLibrary(GetModuleHandleW(L"oxappdll.dll"));
        }
        SetDllDirectoryW(nullptr);
        g_loadState = kOxNotLoaded;
        g_lastError = kOxNoError;
    }

    /// Lets LoadLibraryW("oxappdll") find the library in `folder`.
    void PutOnPath(const std::wstring& folder) { ASSERT_TRUE(SetDllDirectoryW(folder.c_str())); }

    /// Loads a variant by its full path and keeps it loaded, as the driver's process keeps
    /// running: the shim's load by name finds this copy, and the driver's state outlives the
    /// shim's unload and reload. Gives the control API of that copy.
    simdriver::CSimDriverControl& Hold(const wchar_t* variant) {
        m_held.Reset(LoadLibraryW((SimDriverFolder(variant) + L"\\oxappdll.dll").c_str()));
        if (!m_held || !m_control.Bind(m_held.Get())) {
            throw std::runtime_error("the simulated driver library is not built");
        }
        m_control.SimDriverReset();
        return m_control;
    }

private:
    ovklib::CModuleHandle m_held;
    simdriver::CSimDriverControl m_control;
};

}  // namespace qvx::testing
