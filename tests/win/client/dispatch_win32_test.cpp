// The dispatcher: which event types pass under which flags, the command texts, the numeric
// commands' blocks, motion with its delayed end, keys, and records full of garbage.
#include "client_fixture.h"

#include "client/oxapp/device_interfaces.h"

#include <random>
#include <vector>

namespace qvx::testing {
namespace {

using DispatchTest = ListeningTest;

TEST_F(DispatchTest, CommandsPassWithThePluginsFlagsAndMotionAndKeysDoNot) {
    auto& driver = Hold(L"full");
    auto& device = Open(kPluginFlags);
    Listen();
    EXPECT_EQ(device.DispatchEvent(Command("ProCmdViewRefit", true)), 1);
    EXPECT_EQ(device.DispatchEvent(Command("ProCmdViewRefit", false)), 1);
    EXPECT_EQ(commands, (std::vector<std::string>{"ProCmdViewRefit+", "ProCmdViewRefit-"}));

    auto code = Code(43, true, 1.5f);
    code.matrixCommand.blockA[0] = 77;
    EXPECT_EQ(device.DispatchEvent(code), 1);
    EXPECT_EQ(device.DispatchEvent(Code(43, false)), 1);
    EXPECT_EQ(codes, (std::vector<int>{43, -43}));
    EXPECT_EQ(firstInt, 0);
    EXPECT_EQ(firstFloat, 0.0f);
    EXPECT_EQ(device.DispatchEvent(code), 1);
    EXPECT_EQ(firstInt, 77);
    EXPECT_EQ(firstFloat, 1.5f);

    EXPECT_EQ(device.DispatchEvent(Event(19)), 1);
    EXPECT_EQ(valueChanges, 1);

    std::uint32_t grabs = driver.SimDriverCallCount("OxSyncSetGrabSyncID");
    EXPECT_EQ(device.DispatchEvent(Event(20)), 1);
    EXPECT_EQ(driver.SimDriverCallCount("OxSyncSetGrabSyncID"), grabs + 1);

    auto motion = Event(2);
    motion.motion.tx = 5;
    for (const auto& event : {motion, Event(4), Event(1), Event(12), Event(13), Event(0), Event(3),
                              Event(21), Event(0xFFFFFFFF)}) {
        EXPECT_EQ(device.DispatchEvent(event), 0) << event.type;
    }
    auto stray = Command("x", true);
    EXPECT_EQ(oxapp::detail::CS80ClientImpl::CallbackEntry(&stray, Context(device)), 0);
    stray.type = 12;
    EXPECT_EQ(oxapp::detail::CS80ClientImpl::CallbackEntry(&stray, Context(device)), -1);
}

TEST_F(DispatchTest, CommandTextMustBeTerminatedInsideItsFieldAndNotEmpty) {
    Hold(L"full");
    auto& device = Open(kPluginFlags);
    Listen();
    EXPECT_EQ(device.DispatchEvent(Command("", true)), 0);
    EXPECT_EQ(device.DispatchEvent(Command(std::string(500, 'a'), true)), 0);
    EXPECT_EQ(device.DispatchEvent(Command(std::string(499, 'b'), true)), 1);
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(commands[0].size(), 500u) << "499 letters and the press mark";
}

TEST_F(DispatchTest, MotionIsTurnedIntoTheApplicationsAxesAndEndsFiftyMillisecondsLater) {
    Hold(L"full");
    auto& device = Open(0x01 | 0x02);
    auto sensor = ovk::interface_cast<oxapp::ISensor>(m_object);
    auto signals = ovk::interface_cast<oxapp::ISensorSignals>(m_object);
    int motions = 0;
    ovk::interface_ptr<ovk::ISlot> slot(signals->ConnectMotion([&] { ++motions; }));

    auto motion = Event(2);
    motion.motion.tx = 1;
    motion.motion.ty = 2;
    motion.motion.tz = 3;
    motion.motion.rx = 4;
    motion.motion.ry = 5;
    motion.motion.rz = 6;
    EXPECT_EQ(device.DispatchEvent(motion), 1);
    double values[6] = {};
    sensor->GetValues(values);
    EXPECT_EQ(std::vector<double>(values, values + 6), (std::vector<double>{1, -3, -2, 4, -6, -5}));

    EXPECT_EQ(device.DispatchEvent(Event(4)), 0) << "the end waits for its timer";
    EXPECT_EQ(device.DispatchEvent(Event(2)), 0) << "all-zero motion counts as a zero event";
    EXPECT_EQ(motions, 1);
    EXPECT_TRUE(PumpUntil([&] { return motions == 2; }))
        << "the end of motion arrives as a zero motion";
    sensor->GetValues(values);
    EXPECT_EQ(values[0], 0.0);
    EXPECT_EQ(device.DispatchEvent(Event(4)), 1) << "already at rest";

    // Motion within the 50 ms cancels the end. Showing that nothing comes needs real time:
    // a few periods of the timer.
    EXPECT_EQ(device.DispatchEvent(motion), 1);
    EXPECT_EQ(device.DispatchEvent(Event(4)), 0);
    EXPECT_EQ(device.DispatchEvent(motion), 1);
    PumpFor(150);
    EXPECT_EQ(motions, 4);
}

TEST_F(DispatchTest, KeysPassWithTheKeyFlagAndAreRemembered) {
    Hold(L"full");
    auto& device = Open(0x02);
    auto keyboard = ovk::interface_cast<oxapp::IKeyboard>(m_object);
    auto down = Event(12);
    down.key.key = 3;
    EXPECT_EQ(device.DispatchEvent(down), 1);
    EXPECT_TRUE(keyboard->GetKeyState(3));
    auto up = Event(13);
    up.key.key = 3;
    EXPECT_EQ(device.DispatchEvent(up), 1);
    EXPECT_FALSE(keyboard->GetKeyState(3));
    EXPECT_TRUE(keyboard->InjectKeyDown(5));
    EXPECT_TRUE(keyboard->GetKeyState(5)) << "an injected key goes nowhere";
    EXPECT_EQ(device.DispatchEvent(Code(3, true)), 1) << "numeric commands pass with keys too";
}

TEST_F(DispatchTest, RecordsOfGarbageAreTakenOrDroppedButNeverHarm) {
    Hold(L"full");
    auto& device = Open(kPluginFlags);
    Listen();
    std::mt19937 random(1234);
    const std::vector<std::uint32_t> known = {1, 2, 4, 10, 11, 12, 13, 17, 19, 20};
    for (int i = 0; i < 2000; ++i) {
        oxapp::detail::CKvwEvent event;
        auto* bytes = reinterpret_cast<unsigned char*>(static_cast<OxKvwEvent*>(&event));
        for (std::size_t b = 0; b < sizeof(OxKvwEvent); ++b) bytes[b] = random() & 0xFF;
        // Half of them get a type the dispatcher knows.
        if (i % 2) event.type = known[(i / 2) % known.size()];
        std::int32_t taken = device.DispatchEvent(event);
        EXPECT_TRUE(taken == 0 || taken == 1) << "record " << i << " gave " << taken;
        std::int32_t answer = oxapp::detail::CS80ClientImpl::CallbackEntry(&event, Context(device));
        EXPECT_EQ(answer, taken ? 0 : -1) << "record " << i;
    }
    PumpPending();
    EXPECT_FALSE(codes.empty()) << "numeric commands take any bytes";
    for (const auto& text : commands) EXPECT_LT(text.size(), 501u);

    // The client is whole afterwards.
    ASSERT_NE(device.Connection(), 0u);
    commands.clear();
    EXPECT_EQ(device.DispatchEvent(Command("ProCmdViewRefit", true)), 1);
    EXPECT_EQ(commands, std::vector<std::string>{"ProCmdViewRefit+"});
}

}  // namespace
}  // namespace qvx::testing
