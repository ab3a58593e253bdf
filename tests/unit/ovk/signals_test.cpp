// Signal groups built on CSignal, and the slots they hand out.
#include "client/ovk/interface_ptr.h"
#include "client/ovk/signals.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace ovk::testing {
namespace {

/// A signal group in the shape of the device's: one signal, one connect operation.
class CPingSignals : public detail::CSignal {
public:
    ISlot* ConnectPing(boost::function<void(int)> function) { return Connect(m_ping, function); }
    void Ping(int value) { m_ping(value); }

private:
    signal_type<void(int)> m_ping;
};

class CPinger : public virtual detail::CInterface, public CPingSignals {};

class SignalsTest : public ::testing::Test {
protected:
    interface_ptr<IObject> m_object{new CPinger};
    CPinger& m_pinger = dynamic_cast<CPinger&>(*m_object.get());
    std::vector<int> m_received;

    ISlot* Record(int tag) {
        return m_pinger.ConnectPing([this, tag](int value) { m_received.push_back(tag * value); });
    }
};

TEST_F(SignalsTest, SlotsRunInTheOrderTheyWereConnected) {
    interface_ptr<ISlot> first(Record(1));
    interface_ptr<ISlot> second(Record(10));
    m_pinger.Ping(2);
    EXPECT_EQ(m_received, (std::vector<int>{2, 20}));
}

TEST_F(SignalsTest, DisconnectingTwiceIsHarmlessAndStopsOnlyThatSlot) {
    interface_ptr<ISlot> first(Record(1));
    interface_ptr<ISlot> second(Record(10));
    first->Disconnect();
    first->Disconnect();
    m_pinger.Ping(3);
    EXPECT_EQ(m_received, (std::vector<int>{30}));
}

TEST_F(SignalsTest, SignalDisconnectsAGivenSlotAndIgnoresANullOne) {
    interface_ptr<ISlot> slot(Record(1));
    ISignal& signal = m_pinger;
    signal.Disconnect(nullptr);
    m_pinger.Ping(1);
    signal.Disconnect(slot.get());
    m_pinger.Ping(1);
    EXPECT_EQ(m_received, (std::vector<int>{1}));
}

// The slot object holds a plain connection: letting go of it does not disconnect.
TEST_F(SignalsTest, DroppingTheSlotObjectLeavesTheConnection) {
    Record(1)->Release();
    m_pinger.Ping(5);
    EXPECT_EQ(m_received, (std::vector<int>{5}));
}

TEST_F(SignalsTest, SlotOutlivingItsSignalDisconnectsWithoutEffect) {
    auto token = std::make_shared<int>(0);
    interface_ptr<ISlot> slot(m_pinger.ConnectPing([token](int) {}));
    ASSERT_EQ(token.use_count(), 2);
    m_object.reset();
    EXPECT_EQ(token.use_count(), 1) << "the signal's end let go of the function";
    EXPECT_NO_THROW(slot->Disconnect());
    EXPECT_EQ(token.use_count(), 1);
}

}  // namespace
}  // namespace ovk::testing
