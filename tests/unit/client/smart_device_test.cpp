// The public half of a device: configuration values through a caller's buffer, keys, motion
// and the sensor's activity, and the services that forward to the transport half.
#include "tests/unit/common/fake_device.h"

#include "client/oxapp/device_interfaces.h"
#include "client/oxapp/signal_interfaces.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using qvx::testing::CFakeDevice;

ovk::interface_ptr<ovk::IObject> Own(CFakeDevice* device) {
    return ovk::interface_ptr<ovk::IObject>(
        static_cast<ovk::IObject*>(static_cast<oxapp::detail::CSmartDeviceImpl*>(device)));
}

TEST(SmartDevice, ConfigurationValueFitsOnlyWithRoomForItsTerminator) {
    auto* device = new CFakeDevice();
    auto object = Own(device);
    device->values["Speed"] = "12345";
    auto cfg = ovk::interface_cast<oxapp::IAppcfg>(object);
    ASSERT_TRUE(cfg);

    char buffer[16] = "unchanged";
    std::uint32_t size = 5;  // the length without the terminator: too small
    EXPECT_FALSE(cfg->GetValue("Speed", buffer, &size));
    EXPECT_EQ(size, 6u);
    EXPECT_STREQ(buffer, "unchanged");

    size = 0;
    EXPECT_FALSE(cfg->GetValue("Speed", nullptr, &size)) << "a null buffer asks for the size";
    EXPECT_EQ(size, 6u);

    size = 6;
    EXPECT_TRUE(cfg->GetValue("Speed", buffer, &size));
    EXPECT_STREQ(buffer, "12345");

    EXPECT_FALSE(cfg->GetValue("Speed", buffer, nullptr));
    size = sizeof(buffer);
    EXPECT_FALSE(cfg->GetValue("Unknown", buffer, &size)) << "the driver's failure passes on";

    EXPECT_TRUE(cfg->SetValue("Dominant", "1"));
    EXPECT_EQ(device->values["Dominant"], "1");
}

TEST(SmartDevice, KeysAreRememberedAndAnUnseenKeyCountsAsPressed) {
    auto* device = new CFakeDevice();
    auto object = Own(device);
    auto keyboard = ovk::interface_cast<oxapp::IKeyboard>(object);
    auto signals = ovk::interface_cast<oxapp::IKeyboardSignals>(object);
    ASSERT_TRUE(keyboard && signals);
    std::vector<int> seen;
    ovk::interface_ptr<ovk::ISlot> down(
        signals->ConnectKeyDown([&](s3dm::e3dmouse_virtual_key k) { seen.push_back(+k); }));
    ovk::interface_ptr<ovk::ISlot> up(
        signals->ConnectKeyUp([&](s3dm::e3dmouse_virtual_key k) { seen.push_back(-k); }));

    EXPECT_TRUE(keyboard->GetKeyState(s3dm::V3DK_TOP));
    EXPECT_TRUE(keyboard->GetKeyState2(s3dm::V3DK_TOP));
    device->OnKey(1, s3dm::V3DK_TOP, true);
    device->OnKey(1, s3dm::V3DK_TOP, false);
    EXPECT_FALSE(keyboard->GetKeyState(s3dm::V3DK_TOP));
    EXPECT_FALSE(keyboard->GetKeyState2(s3dm::V3DK_TOP));
    EXPECT_EQ(seen, (std::vector<int>{3, -3}));

    down->Disconnect();
    device->OnKey(1, s3dm::V3DK_FIT, true);
    EXPECT_EQ(seen.size(), 2u) << "a disconnected slot hears nothing";
}

TEST(SmartDevice, MotionIsStoredAndSignalledOnlyWhileTheSensorIsNotActive) {
    auto* device = new CFakeDevice();
    auto object = Own(device);
    auto sensor = ovk::interface_cast<oxapp::ISensor>(object);
    auto signals = ovk::interface_cast<oxapp::ISensorSignals>(object);
    ASSERT_TRUE(sensor && signals);
    int motions = 0, starts = 0, ends = 0;
    ovk::interface_ptr<ovk::ISlot> a(signals->ConnectMotion([&] { ++motions; }));
    ovk::interface_ptr<ovk::ISlot> b(signals->ConnectMotionStart([&] { ++starts; }));
    ovk::interface_ptr<ovk::ISlot> c(signals->ConnectMotionEnd([&] { ++ends; }));

    const float values[6] = {1, -2, 3, 4.5f, 0, -6};
    device->OnMotion(1, values);
    double out[6] = {};
    sensor->GetValues(out);
    EXPECT_EQ(out[1], -2.0);
    EXPECT_EQ(out[3], 4.5);
    EXPECT_EQ(motions, 1);

    signals->Begin();
    signals->Begin();
    device->OnMotion(1, values);
    EXPECT_EQ(motions, 1) << "no motion signal while active";
    signals->End();
    EXPECT_EQ(ends, 0);
    signals->End();
    EXPECT_EQ(starts, 1);
    EXPECT_EQ(ends, 1);
    signals->End();
    EXPECT_EQ(ends, 1) << "an End too many fires nothing";
    EXPECT_FALSE(signals->IsActive());
    signals->Begin();
    EXPECT_EQ(starts, 2) << "the count was put back to zero";
}

TEST(SmartDevice, ServicesForwardToTheTransportHalf) {
    auto* device = new CFakeDevice();
    auto object = Own(device);
    auto sensor = ovk::interface_cast<oxapp::ISensor>(object);
    sensor->SetGrabMode(1);
    EXPECT_EQ(device->grab, 1);
    sensor->SetGrabMode(2);
    EXPECT_EQ(device->grab, 2);
    sensor->SetGrabMode(7);
    EXPECT_EQ(device->grab, 0);

    EXPECT_TRUE(ovk::interface_cast<oxapp::ICommand>(object)->ShowUi());
    EXPECT_EQ(device->uiMode, -1);

    device->driverMajor = 16;
    OxVersionInfo version{};
    std::strcpy(version.version, "stale");
    EXPECT_TRUE(ovk::interface_cast<oxapp::IInfo>(object)->GetInfo(&version));
    EXPECT_EQ(version.major, 16);
    EXPECT_STREQ(version.version, "") << "the library's version is not what the caller sees";
}

TEST(SmartDevice, CommandsReachTheirSignalsWithoutTheHandle) {
    auto* device = new CFakeDevice();
    auto object = Own(device);
    auto signals = ovk::interface_cast<oxapp::IAppcmdSignals>(object);
    auto cfgSignals = ovk::interface_cast<oxapp::IAppcfgSignals>(object);
    std::string text;
    std::uint32_t code = 0;
    float parameter = 0;
    int changes = 0;
    ovk::interface_ptr<ovk::ISlot> a(signals->ConnectCommand(
        [&](const char* c, bool pressed) { text = c + std::string(pressed ? "+" : "-"); }));
    ovk::interface_ptr<ovk::ISlot> b(
        signals->ConnectCommandEx([&](std::uint32_t id, bool, const void*, const void* floats) {
            code = id;
            parameter = static_cast<const float*>(floats)[0];
        }));
    ovk::interface_ptr<ovk::ISlot> c(cfgSignals->ConnectValueChanged([&] { ++changes; }));

    device->OnCommand(7, "ProCmdViewRefit", true);
    const int ints[16] = {};
    const float floats[16] = {1.5f};
    device->OnCommandEx(7, 43, true, ints, floats);
    device->OnValueChanged(7);
    EXPECT_EQ(text, "ProCmdViewRefit+");
    EXPECT_EQ(code, 43u);
    EXPECT_EQ(parameter, 1.5f);
    EXPECT_EQ(changes, 1);
}

}  // namespace
