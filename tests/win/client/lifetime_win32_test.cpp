// Devices made and destroyed while their timers fire: a timer that the system runs after its
// client has gone must touch nothing of it.
#include "client_fixture.h"

#include <atomic>

namespace qvx::testing {
namespace {

using oxapp::detail::CS80ClientImpl;

std::atomic<int> g_fired{0};

/// Counts the callbacks, and now and then holds one a moment on its thread, so that some
/// run on while their client is destroyed.
void SlowProbe() {
    if (++g_fired % 4 == 0) Sleep(1);
}

TEST_F(ClientTest, DeviceDestroyedWhileItsTimersFireLeavesNothingBehind) {
    auto& driver = Hold(L"full");
    driver.SimDriverSetLogging(0);
    // The driver never answers the sync query, so a client's query timer runs out.
    driver.SimDriverSetSyncAnswer(0);
    const std::uint32_t flags = oxapp::kFlagMotion | oxapp::kFlagSyncFunctions | kPluginFlags;
    auto motion = Event(2);
    motion.motion.tx = 3;
    auto function = Event(11);
    function.sync.kind = kOxSyncAnswer;
    function.sync.code = kOxSyncFunction;
    function.sync.value = 1;  // not the last function: the pause timer starts
    // One timer kind fires at once in each round. Wine's timer queue cannot be deleted while
    // two of its timers have callbacks under way (the deletion never returns), a case too
    // rare to matter at the client's real periods but certain at these.
    constexpr DWORD kSoon = 1;
    constexpr DWORD kLater = 60'000;
    const CS80ClientImpl::TimerPeriods kinds[] = {
        {.syncQuery = kSoon, .nextFunction = kLater, .motionEnd = kLater},
        {.syncQuery = kLater, .nextFunction = kLater, .motionEnd = kSoon},
        {.syncQuery = kLater, .nextFunction = kSoon, .motionEnd = kLater},
    };

    constexpr int kRounds = 2000;
    for (int round = 0; round < kRounds; ++round) {
        CS80ClientImpl::SetTimersForTest(kinds[round % 3], &SlowProbe);
        auto& device = Open(flags);
        ASSERT_NE(device.Connection(), 0u) << "round " << round;
        if (round % 3 == 1) {
            device.DispatchEvent(motion);
            device.DispatchEvent(Event(4));
        } else if (round % 3 == 2) {
            device.DispatchEvent(function);
        }
        if (round % 2 == 0) Sleep(1);  // let some timers fire before the end
        m_object.reset();
        // Now and then the messages of the timers that fired are taken; in between they
        // pile up for windows that are gone.
        if (round % 8 == 0) PumpPending();
    }
    PumpPending();
    EXPECT_GT(g_fired.load(), kRounds / 20) << "too few timers fired while clients came and went";
    EXPECT_EQ(driver.SimDriverConnectionCount(), 0u);

    // A device made afterwards works as usual.
    CS80ClientImpl::SetTimersForTest({}, nullptr);
    auto& device = Open(kPluginFlags);
    EXPECT_NE(device.Connection(), 0u);
}

}  // namespace
}  // namespace qvx::testing
