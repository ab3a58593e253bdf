// The simulated driver speaking to a real client: records fetched on the window's message,
// records handed to the callback on the driver's thread, the sync exchange answered, sent or
// never answered, and a driver or client that goes away while the other still talks.
#include "client_fixture.h"

#include <cwctype>

namespace qvx::testing {
namespace {

using RoadsTest = ListeningTest;

OxKvwEvent Plain(const oxapp::detail::CKvwEvent& event) { return event; }

TEST_F(RoadsTest, WindowRoadFetchesEachAnnouncedRecordOnTheWindowsThread) {
    auto& driver = Hold(L"full");
    Open(kPluginFlags);
    Listen();
    auto top = Plain(Code(43, true, 2.5f));
    EXPECT_EQ(driver.SimDriverSendEvent(&top), 1u);
    auto text = Plain(Command("ProCmdViewRefit", true));
    EXPECT_EQ(driver.SimDriverSendEvent(&text), 1u);
    EXPECT_TRUE(codes.empty()) << "nothing arrives before the window's thread takes its messages";
    EXPECT_TRUE(PumpUntil([&] { return codes.size() == 1 && commands.size() == 1; }));
    EXPECT_EQ(codes, std::vector<int>{43});
    EXPECT_EQ(firstFloat, 2.5f);
    EXPECT_EQ(commands, std::vector<std::string>{"ProCmdViewRefit+"});
    EXPECT_EQ(handlerThread, GetCurrentThreadId());
}

TEST_F(RoadsTest, CallbackRoadRunsTheHandlerOnTheDriversThread) {
    auto& driver = Hold(L"full");
    Open(kPluginFlags);
    Listen();
    ASSERT_EQ(driver.SimDriverHasCallback(), 1);
    DWORD driverThread = 0;
    std::int32_t taken = 99;
    std::int32_t refused = 99;
    std::thread thread([&] {
        driverThread = GetCurrentThreadId();
        auto release = Plain(Code(43, false));
        taken = driver.SimDriverCallEvent(&release);
        auto unknown = Plain(Event(77));
        refused = driver.SimDriverCallEvent(&unknown);
    });
    thread.join();
    EXPECT_EQ(taken, 0);
    EXPECT_EQ(refused, -1);
    EXPECT_EQ(codes, std::vector<int>{-43});
    EXPECT_EQ(handlerThread, driverThread);
}

TEST_F(RoadsTest, DriverThatVanishesMidSessionIsHarmlessUntilItComesBack) {
    auto& driver = Hold(L"full");
    auto& device = Open(kPluginFlags);
    Listen();
    HWND window = device.Window();
    driver.SimDriverStop();
    auto press = Plain(Code(43, true));
    EXPECT_EQ(driver.SimDriverSendEvent(&press), 0u);
    // A message of its own kind still comes, but there is nothing to fetch.
    SendMessageW(window, oxapp::detail::ClientMessages().event, 1, 0);
    PumpPending();
    EXPECT_TRUE(codes.empty());

    driver.SimDriverStart();
    EXPECT_EQ(driver.SimDriverPostCommandEvent(27704), 1u);
    ASSERT_TRUE(PumpUntil([&] { return device.Connection() != 0; }));
    EXPECT_EQ(driver.SimDriverSendEvent(&press), 1u);
    EXPECT_TRUE(PumpUntil([&] { return !codes.empty(); }));
    EXPECT_EQ(codes, std::vector<int>{43});
}

TEST_F(RoadsTest, NothingReachesAClientAfterItClosed) {
    auto& driver = Hold(L"full");
    auto& device = Open(kPluginFlags);
    Listen();
    HWND window = device.Window();
    EXPECT_TRUE(device.Close());
    EXPECT_EQ(driver.SimDriverConnectionCount(), 0u);
    auto press = Plain(Code(43, true));
    EXPECT_EQ(driver.SimDriverSendEvent(&press), 0u);
    EXPECT_LT(driver.SimDriverCallEvent(&press), 0);
    EXPECT_FALSE(IsWindow(window));
    PumpPending();
    EXPECT_TRUE(codes.empty());
}

/// The sum of the upper-case letters of this program's file name, the identifier a client
/// falls back on when the driver never answers its sync query.
std::uint32_t ProgramNameSum() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring name(path);
    name = name.substr(name.find_last_of(L'\\') + 1);
    std::uint32_t sum = 0;
    for (wchar_t c : name) sum += static_cast<std::uint32_t>(std::towupper(c));
    return sum;
}

TEST_F(RoadsTest, SyncQueryAnsweredByPostOrSendReadsTheDriversStateAtOnce) {
    auto& driver = Hold(L"full");
    for (std::int32_t mode : {1, 2}) {
        driver.SimDriverSetSyncAnswer(mode);
        std::uint32_t filters = driver.SimDriverCallCount("OxSyncGetFilter");
        auto& device = Open(kPluginFlags);
        EXPECT_TRUE(PumpUntil([&] {
            return driver.SimDriverCallCount("OxSyncGetFilter") == filters + 3;
        })) << mode;
        EXPECT_EQ(device.SyncId(), (0x2A00 + device.Connection()) & 0xFFFF) << mode;
    }
}

TEST_F(RoadsTest, SyncQueryNeverAnsweredIsTakenUpAfterItsTimeUnderTheProgramsName) {
    // The period is real time, shortened so that the test stays quick; the lower bound on the
    // elapsed time is what shows that the client waited for it.
    constexpr DWORD kPeriodMs = 200;
    oxapp::detail::CS80ClientImpl::SetTimersForTest({.syncQuery = kPeriodMs}, nullptr);
    auto& driver = Hold(L"full");
    driver.SimDriverSetSyncAnswer(0);
    ULONGLONG start = GetTickCount64();
    auto& device = Open(kPluginFlags);
    PumpPending();
    EXPECT_EQ(driver.SimDriverCallCount("OxSyncGetFilter"), 0u) << "still waiting";
    ASSERT_TRUE(PumpUntil([&] { return driver.SimDriverCallCount("OxSyncGetFilter") == 3; }));
    EXPECT_GE(GetTickCount64() - start, kPeriodMs - 20) << "the system clock's granularity";
    EXPECT_EQ(device.SyncId(), ProgramNameSum());
}

}  // namespace
}  // namespace qvx::testing
