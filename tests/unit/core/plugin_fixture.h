// A fresh simulated host and a clean plug-in state for each test of the plug-in's lifecycle.
#pragma once

#include "core/language.h"
#include "core/qvxproe.h"
#include "sim/host/session.h"
#include "support/os.h"
#include "support/registry.h"
#include "core/entry_points.h"
#include "toolkit/pro_notification.h"

#include "tests/unit/common/fake_device.h"
#include "tests/unit/common/fake_main_loop.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace qvx::testing {

class PluginTest : public ::testing::Test {
protected:
    void SetUp() override {
        user_terminate_plus();
        sim::CSession::Instance().Reset();
        CQvxProNotification::ForgetAll();
        os::SetEnv(L"PRO_LANG", std::nullopt);
        SetHomeDirectory(std::nullopt);
        g_langId = 0x0409;
        g_langCode = L"en-US";
        m_scratch =
            std::filesystem::temp_directory_path() /
            ("qvx_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::remove_all(m_scratch);
        std::filesystem::create_directories(m_scratch);
    }

    void TearDown() override {
        user_terminate_plus();
        SetHomeDirectory(std::nullopt);
        std::error_code ec;
        std::filesystem::remove_all(m_scratch, ec);
    }

    static void SetHomeDirectory(const std::optional<std::wstring>& dir) {
        os::WriteRegistryString(os::RegistryRoot::LocalMachine,
                                L"SOFTWARE\\Quorvex\\QvxProENGINEER", L"Home Directory", dir);
    }

    /// Loads the plug-in into the simulated host as the host would.
    static int Load() { return user_initialize_plus(sim::CSession::Instance().Args()); }

    std::wstring Scratch(const char* leaf) const { return (m_scratch / leaf).wstring(); }

    std::filesystem::path m_scratch;

    CFakeMainLoop m_loop;
    CFakeDeviceFactory m_devices;
};

}  // namespace qvx::testing
