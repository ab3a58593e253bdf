// Connecting the driver at start-up: the flags, the version rule, and what stays idle.
#include "plugin_fixture.h"

namespace qvx::testing {
namespace {

using ::testing::internal::CaptureStdout;
using ::testing::internal::GetCapturedStdout;

TEST_F(PluginTest, DriverOfVersionTenIsOpenedForCommandsAndHeldUntilTerminate) {
    Load();
    ASSERT_TRUE(g_qvxProE);
    ASSERT_NE(m_devices.Last(), nullptr);
    EXPECT_EQ(m_devices.Last()->flags, 48u) << "commands and the callback, no motion, no keys";
    EXPECT_TRUE(g_qvxProE->Device());
    EXPECT_EQ(CFakeDevice::alive, 1);
    CaptureStdout();
    user_terminate_plus();
    GetCapturedStdout();
    EXPECT_EQ(CFakeDevice::alive, 0) << "Stop lets the device go";
}

TEST_F(PluginTest, DriverBelowVersionTenOrAbsentLeavesThePluginIdle) {
    for (std::int32_t major : {9, 0, -1}) {
        m_devices.SetDriverMajor(major);
        CaptureStdout();
        Load();
        GetCapturedStdout();
        EXPECT_FALSE(g_qvxProE) << major;
        EXPECT_EQ(CFakeDevice::alive, 0) << "the refused device is released at once";
    }
    m_devices.SetDriverMajor(10);
    Load();
    EXPECT_TRUE(g_qvxProE) << "nothing of the refusal stays behind";
}

TEST_F(PluginTest, NoDeviceObjectAtAllLeavesThePluginIdle) {
    oxapp::SetDeviceFactoryForTest(
        [](std::uint32_t) { return ovk::interface_ptr<ovk::IObject>(); });
    Load();
    EXPECT_FALSE(g_qvxProE);
}

}  // namespace
}  // namespace qvx::testing
