// The device object's connection: how it opens, the window it makes, reconnecting when the
// driver asks, and a driver that is absent or goes away.
#include "client_fixture.h"

#include "client/oxapp/device_interfaces.h"

namespace qvx::testing {
namespace {

using oxapp::detail::ClientMessages;

bool LogHas(simdriver::CSimDriverControl& driver, const std::string& text) {
    return driver.Log().find(text) != std::string::npos;
}

TEST_F(ClientTest, PluginsFlagsOpenForCommandsWithoutMotionUnderTheProgramsName) {
    auto& driver = Hold(L"full");
    auto& device = Open(kPluginFlags);
    EXPECT_EQ(device.Flags(), 0x34u) << "the sync state bit is always added";
    ASSERT_NE(device.Connection(), 0u);
    EXPECT_EQ(driver.SimDriverConnectionCount(), 1u);
    EXPECT_TRUE(LogHas(driver, "app=\"win_client.exe\" device=-1 mask=0 mode=9")) << driver.Log();
    EXPECT_EQ(driver.SimDriverHasCallback(), 1);
    EXPECT_EQ(driver.SimDriverCallCount("OxSyncSetGrabSyncID"), 1u);
    EXPECT_EQ(driver.SimDriverCallCount("OxSyncSendQuery"), 1u);
    EXPECT_GE(driver.SimDriverCallCount("OxGetDeviceInfo"), 1u);

    HWND window = device.Window();
    wchar_t title[64] = {};
    GetWindowTextW(window, title, 64);
    EXPECT_STREQ(title, L"libovk::s80trans");
    EXPECT_EQ(GetParent(window), nullptr);
    EXPECT_FALSE(IsWindowVisible(window));

    EXPECT_FALSE(device.Create(nullptr, kPluginFlags)) << "one window per client";
    EXPECT_EQ(driver.SimDriverConnectionCount(), 1u);

    OxVersionInfo version{};
    EXPECT_TRUE(ovk::interface_cast<oxapp::IInfo>(m_object)->GetInfo(&version));
    EXPECT_EQ(version.major, 10);

    device.Close();
    EXPECT_EQ(driver.SimDriverConnectionCount(), 0u);
    EXPECT_EQ(driver.SimDriverHasCallback(), 0);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(driver.SimDriverCallCount("OxClose"), 1u);
    device.Close();
    EXPECT_EQ(driver.SimDriverCallCount("OxClose"), 1u) << "a second close closes nothing";
}

TEST_F(ClientTest, MotionAndProxyFlagsChangeTheModeAndTheWindowTheDriverTalksTo) {
    auto& driver = Hold(L"full");
    auto& device = Open(0x01 | 0x40);
    ASSERT_NE(device.Connection(), 0u);
    EXPECT_TRUE(LogHas(driver, "mode=1")) << driver.Log();
    EXPECT_EQ(driver.SimDriverCallCount("OxSyncSetGrabSyncID"), 0u) << "no commands, no grab id";
    HWND proxy = FindWindowW(L"s80_proxy", nullptr);
    ASSERT_NE(proxy, nullptr);
    EXPECT_NE(GetWindowThreadProcessId(proxy, nullptr), GetCurrentThreadId());

    // A reconnect request to the proxy is handled on this thread, where the client lives.
    driver.SimDriverSetVersion(16, 0, 0);
    device.Close();
    auto& second = Open(0x10 | 0x40);
    ASSERT_NE(second.Connection(), 0u);
    proxy = FindWindowW(L"s80_proxy", nullptr);
    std::uint32_t opens = driver.SimDriverCallCount("OxOpen");
    PostMessageW(proxy, ClientMessages().command, 27704, 0);
    EXPECT_TRUE(PumpUntil([&] { return driver.SimDriverCallCount("OxOpen") == opens + 1; }));
}

TEST_F(ClientTest, ReconnectOnlyOnItsCodeAndOnlyForDriversBelowSeventeen) {
    auto& driver = Hold(L"full");
    driver.SimDriverSetVersion(16, 2, 0);
    auto& device = Open(kPluginFlags);
    HWND window = device.Window();
    OxHandle first = device.Connection();
    ASSERT_NE(first, 0u);

    SendMessageW(window, ClientMessages().command, 27703, 0);
    EXPECT_EQ(device.Connection(), first);
    SendMessageW(window, ClientMessages().command, 27704, 0);
    EXPECT_NE(device.Connection(), first) << "closed and opened again";
    EXPECT_EQ(driver.SimDriverConnectionCount(), 1u);

    device.Close();
    driver.SimDriverSetVersion(17, 0, 0);
    auto& modern = Open(kPluginFlags);
    OxHandle kept = modern.Connection();
    SendMessageW(modern.Window(), ClientMessages().command, 27704, 0);
    EXPECT_EQ(modern.Connection(), kept) << "a modern driver keeps its connections";
}

TEST_F(ClientTest, DriverThatRestartsIsFoundAgainOnItsReconnectRequest) {
    auto& driver = Hold(L"full");
    auto& device = Open(kPluginFlags);
    ASSERT_NE(device.Connection(), 0u);
    driver.SimDriverStop();
    driver.SimDriverStart();
    SendMessageW(device.Window(), ClientMessages().command, 27704, 0);
    EXPECT_NE(device.Connection(), 0u);
    EXPECT_EQ(driver.SimDriverConnectionCount(), 1u);
    EXPECT_EQ(driver.SimDriverHasCallback(), 1);
}

/// A client that could not reconnect waits: the driver's events find nobody, but the next
/// reconnect request is heard.
class WaitingClientTest : public ListeningTest {
protected:
    /// Events of every road after the failed reconnect are dropped.
    void ExpectDeafToEvents(simdriver::CSimDriverControl& driver) {
        auto press = Command("ProCmdViewRefit", true);
        SendMessageW(m_device->Window(), ClientMessages().event, 1, 0);
        EXPECT_EQ(oxapp::detail::CS80ClientImpl::CallbackEntry(&press, Context(*m_device)), -1);
        SendMessageW(m_device->Window(), ClientMessages().sync, 0x00010002, 0);
        EXPECT_TRUE(commands.empty());
        EXPECT_EQ(driver.SimDriverCallCount("OxGetEvent"), 0u);
        EXPECT_EQ(driver.SimDriverCallCount("OxSyncGetFilter"), 0u);
    }

    /// The driver announces itself; the client is connected and hears commands again.
    void ExpectFoundAgain(simdriver::CSimDriverControl& driver) {
        EXPECT_EQ(driver.SimDriverPostCommandEvent(27704), 1u);
        ASSERT_TRUE(PumpUntil([&] { return m_device->Connection() != 0; }));
        EXPECT_EQ(driver.SimDriverConnectionCount(), 1u);
        EXPECT_EQ(driver.SimDriverHasCallback(), 1);
        auto press = Command("ProCmdViewRefit", true);
        EXPECT_EQ(driver.SimDriverSendEvent(&press), 1u);
        EXPECT_TRUE(PumpUntil([&] { return !commands.empty(); }));
    }
};

TEST_F(WaitingClientTest, ReconnectWhileTheDriverIsDownWaitsForItsNextAnnouncement) {
    auto& driver = Hold(L"full");
    auto& device = Open(kPluginFlags);
    Listen();
    driver.SimDriverStop();
    SendMessageW(device.Window(), ClientMessages().command, 27704, 0);
    ASSERT_EQ(device.Connection(), 0u);
    driver.SimDriverClearLog();
    ExpectDeafToEvents(driver);

    driver.SimDriverStart();
    ExpectFoundAgain(driver);
}

TEST_F(WaitingClientTest, RefusedOpenIsTriedAgainOnTheNextAnnouncement) {
    auto& driver = Hold(L"full");
    auto& device = Open(kPluginFlags);
    Listen();
    driver.SimDriverRefuse("OxOpen", kOxBadValue);
    SendMessageW(device.Window(), ClientMessages().command, 27704, 0);
    ASSERT_EQ(device.Connection(), 0u);
    driver.SimDriverRefuse("OxOpen", kOxNoError);
    driver.SimDriverClearLog();
    ExpectDeafToEvents(driver);

    ExpectFoundAgain(driver);
}

// A driver of version 17 keeps connections through its restarts, so a connected client lets
// its requests pass; a client it refused has nothing to keep and asks again.
TEST_F(WaitingClientTest, RefusedByADriverThatKeepsConnectionsStillAsksAgain) {
    auto& driver = Hold(L"full");
    driver.SimDriverSetVersion(17, 0, 0);
    driver.SimDriverRefuse("OxOpen", kOxBadValue);
    auto& device = Open(kPluginFlags);
    Listen();
    ASSERT_EQ(device.Connection(), 0u);
    driver.SimDriverRefuse("OxOpen", kOxNoError);
    ExpectFoundAgain(driver);

    OxHandle kept = device.Connection();
    SendMessageW(device.Window(), ClientMessages().command, 27704, 0);
    EXPECT_EQ(device.Connection(), kept);
    EXPECT_EQ(driver.SimDriverCallCount("OxOpen"), 2u);
}

TEST_F(ClientTest, WithoutALibraryTheWindowWaitsAndEveryServiceSaysNo) {
    auto& device = Open(kPluginFlags);
    EXPECT_NE(device.Window(), nullptr) << "a missing driver is not a failed Create";
    EXPECT_EQ(device.Connection(), 0u);
    OxVersionInfo version{};
    version.major = 99;
    EXPECT_FALSE(ovk::interface_cast<oxapp::IInfo>(m_object)->GetInfo(&version));
    EXPECT_EQ(version.major, 0);
    std::uint32_t pid = 1234;
    EXPECT_FALSE(device.GetProductId(pid));
    EXPECT_EQ(pid, 1234u);
    std::string value = "kept";
    EXPECT_FALSE(device.oxapp::detail::CS80ClientImpl::GetValue("key", value));
    EXPECT_EQ(device.MessageBox(nullptr, "text", "caption", 0), 0);
    EXPECT_FALSE(device.SetUiMode(-1));
    EXPECT_EQ(device.GetAttachedDeviceCount(), 0u);
    auto stray = Event(10);
    EXPECT_EQ(oxapp::detail::CS80ClientImpl::CallbackEntry(&stray, nullptr), -1);
}

TEST_F(ClientTest, ServicesReachTheDriverAndItsAnswersComeBack) {
    auto& driver = Hold(L"full");
    auto& device = Open(kPluginFlags);
    driver.SimDriverSetConfigValue("Speed", "12");
    char buffer[8] = {};
    std::uint32_t size = sizeof(buffer);
    auto cfg = ovk::interface_cast<oxapp::IAppcfg>(m_object);
    EXPECT_TRUE(cfg->GetValue("Speed", buffer, &size));
    EXPECT_STREQ(buffer, "12");
    EXPECT_TRUE(cfg->SetValue("Speed", "13"));
    std::string value;
    EXPECT_TRUE(device.oxapp::detail::CS80ClientImpl::GetValue("Speed", value));
    EXPECT_EQ(value, "13");

    std::uint32_t pid = 0;
    EXPECT_TRUE(device.GetProductId(pid));
    EXPECT_EQ(pid, 0x5101u) << "device type 29";
    driver.SimDriverSetDevice(0x7777, "other");
    EXPECT_TRUE(device.GetProductId(pid));
    EXPECT_EQ(pid, 0x7777u) << "an unknown type is its own product";

    std::wstring label;
    EXPECT_TRUE(device.GetKeyLabel(0x5101, 7, label));
    EXPECT_EQ(label, L"T");
    EXPECT_FALSE(device.GetKeyLabel(0x5101, 21, label)) << "65537 has no label";

    driver.SimDriverSetMessageBoxAnswer(0);
    EXPECT_THROW(device.MessageBox(nullptr, "text", "caption", 0), std::int32_t);
    driver.SimDriverSetMessageBoxAnswer(6);
    EXPECT_EQ(device.MessageBox(nullptr, "text", "caption", 0), 6);
    EXPECT_TRUE(ovk::interface_cast<oxapp::ICommand>(m_object)->ShowUi());
}

TEST_F(ClientTest, NoLoaderLockOnAnOrdinaryThread) {
    EXPECT_FALSE(oxapp::detail::HoldsLoaderLock());
}

}  // namespace
}  // namespace qvx::testing
