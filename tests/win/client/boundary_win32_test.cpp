// What a throwing slot or timer does to a client: the boundary on its road stops it, counts
// it, and gives the road's own answer; the process and the client go on.
#include "client_fixture.h"

#include "client/oxapp/device_interfaces.h"
#include "support/boundary.h"

#include <atomic>
#include <stdexcept>

namespace qvx::testing {
namespace {

using oxapp::detail::CS80ClientImpl;

/// A device whose command slot throws for the first `failures` commands, then records them.
class ThrowingSlotTest : public ClientTest {
protected:
    void ListenThrowing(int failures) {
        m_failures = failures;
        auto signals = ovk::interface_cast<oxapp::IAppcmdSignals>(m_object);
        m_slot =
            ovk::interface_ptr<ovk::ISlot>(signals->ConnectCommand([this](const char* text, bool) {
                if (m_failures > 0) {
                    --m_failures;
                    throw std::runtime_error("slot failed");
                }
                commands.push_back(text);
            }));
    }

    std::vector<std::string> commands;

private:
    int m_failures = 0;
    ovk::interface_ptr<ovk::ISlot> m_slot;
};

OxKvwEvent Plain(const oxapp::detail::CKvwEvent& event) { return event; }

TEST_F(ThrowingSlotTest, OnTheWindowRoadTheEventIsLostAndTheNextOneArrives) {
    auto& driver = Hold(L"full");
    Open(kPluginFlags);
    ListenThrowing(1);
    std::uint64_t caught = BoundaryCatchCount();
    auto first = Plain(Command("First", true));
    auto second = Plain(Command("Second", true));
    ASSERT_EQ(driver.SimDriverSendEvent(&first), 1u);
    ASSERT_EQ(driver.SimDriverSendEvent(&second), 1u);
    EXPECT_TRUE(PumpUntil([&] { return !commands.empty(); }));
    EXPECT_EQ(BoundaryCatchCount(), caught + 1);
    EXPECT_EQ(commands, std::vector<std::string>{"Second"});
}

TEST_F(ThrowingSlotTest, OnTheCallbackRoadTheDriverHearsNotTakenAndTheNextOneIsTaken) {
    auto& driver = Hold(L"full");
    Open(kPluginFlags);
    ListenThrowing(1);
    std::uint64_t caught = BoundaryCatchCount();
    std::int32_t answers[2] = {99, 99};
    std::thread thread([&] {
        auto first = Plain(Command("First", true));
        auto second = Plain(Command("Second", true));
        answers[0] = driver.SimDriverCallEvent(&first);
        answers[1] = driver.SimDriverCallEvent(&second);
    });
    thread.join();
    EXPECT_EQ(answers[0], -1);
    EXPECT_EQ(answers[1], 0);
    EXPECT_EQ(BoundaryCatchCount(), caught + 1);
    EXPECT_EQ(commands, std::vector<std::string>{"Second"});
}

/// A handler that throws outside the dispatcher reaches the window procedure's boundary: the
/// end of motion, delivered by the window's own message.
TEST_F(ClientTest, SlotThatThrowsInAWindowMessageLeavesTheWindowWorking) {
    Hold(L"full");
    auto& device = Open(oxapp::kFlagMotion);
    auto signals = ovk::interface_cast<oxapp::ISensorSignals>(m_object);
    int motions = 0;
    ovk::interface_ptr<ovk::ISlot> slot(signals->ConnectMotion([&] {
        if (++motions == 2) throw std::runtime_error("motion slot failed");
    }));
    std::uint64_t caught = BoundaryCatchCount();
    auto motion = Event(2);
    motion.motion.tx = 7;
    ASSERT_EQ(device.DispatchEvent(motion), 1);
    ASSERT_EQ(device.DispatchEvent(Event(4)), 0);
    EXPECT_TRUE(PumpUntil([&] { return motions == 2; })) << "the end of motion throws";
    EXPECT_EQ(BoundaryCatchCount(), caught + 1);

    EXPECT_TRUE(IsWindow(device.Window()));
    ASSERT_EQ(device.DispatchEvent(motion), 1);
    ASSERT_EQ(device.DispatchEvent(Event(4)), 0);
    EXPECT_TRUE(PumpUntil([&] { return motions == 4; })) << "the next end arrives";
    EXPECT_EQ(BoundaryCatchCount(), caught + 1);
}

std::atomic<int> g_probeCalls{0};
ovklib::CKernelHandle g_probeRan(CreateEventW(nullptr, TRUE, FALSE, nullptr));

void ThrowingProbe() {
    ++g_probeCalls;
    SetEvent(g_probeRan.Get());
    throw std::runtime_error("timer body failed");
}

TEST_F(ClientTest, TimerWhoseBodyThrowsIsStoppedAndTheNextTimerWorks) {
    Hold(L"full");
    auto& device = Open(oxapp::kFlagMotion);
    auto signals = ovk::interface_cast<oxapp::ISensorSignals>(m_object);
    int motions = 0;
    ovk::interface_ptr<ovk::ISlot> slot(signals->ConnectMotion([&] { ++motions; }));
    CS80ClientImpl::SetTimersForTest({}, &ThrowingProbe);
    std::uint64_t caught = BoundaryCatchCount();
    auto motion = Event(2);
    motion.motion.tx = 7;
    ASSERT_EQ(device.DispatchEvent(motion), 1);
    ASSERT_EQ(device.DispatchEvent(Event(4)), 0);
    ASSERT_EQ(WaitForSingleObject(g_probeRan.Get(), 5000), WAIT_OBJECT_0);
    // The boundary counts the exception on the timer's thread just after the probe threw.
    for (int i = 0; i < 100'000 && BoundaryCatchCount() == caught; ++i) SwitchToThread();
    EXPECT_EQ(BoundaryCatchCount(), caught + 1);
    EXPECT_EQ(g_probeCalls, 1);
    PumpPending();
    EXPECT_EQ(motions, 1) << "the failed timer posted no end of motion";

    CS80ClientImpl::SetTimersForTest({}, nullptr);
    ASSERT_EQ(device.DispatchEvent(motion), 1);
    ASSERT_EQ(device.DispatchEvent(Event(4)), 0);
    EXPECT_TRUE(PumpUntil([&] { return motions == 3; }));
}

}  // namespace
}  // namespace qvx::testing
