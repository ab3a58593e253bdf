// The simulated driver speaking to real windows of this thread: events queued and announced,
// the callback road on a thread of the caller's choosing, the driver's command messages, the
// answers to a sync query, and a call log that can be switched off.
#include "tests/win/shim/shim_fixture.h"

#include <cstring>
#include <functional>
#include <thread>
#include <vector>

namespace qvx::testing {
namespace {

struct Received {
    UINT message;
    WPARAM wParam;
    bool sentFromOtherThread;
};

/// What the test windows received, in order. Only this thread's windows write it.
std::vector<Received> g_received;

LRESULT CALLBACK RecordingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message >= 0xC000) {
        bool sent = (InSendMessageEx(nullptr) & (ISMEX_SEND | ISMEX_REPLIED)) == ISMEX_SEND;
        g_received.push_back({message, wParam, sent});
        if (sent) ReplyMessage(1);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

class DriverEventsTest : public ShimTest {
protected:
    void SetUp() override {
        ShimTest::SetUp();
        g_received.clear();
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = &RecordingProc;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"simdriver-events-test";
        RegisterClassW(&windowClass);
        m_event = RegisterWindowMessageW(L"KelvaroMessage00");
        m_command = RegisterWindowMessageW(L"CommandEvent");
        m_sync = RegisterWindowMessageW(L"SyncCommandEvent");
    }

    /// A message-only window of this thread that records the registered messages it gets.
    static ovklib::CWindowHandle MakeWindow() {
        return ovklib::CWindowHandle(CreateWindowExW(0, L"simdriver-events-test", L"", 0, 0, 0, 0,
                                                     0, HWND_MESSAGE, nullptr,
                                                     GetModuleHandleW(nullptr), nullptr));
    }

    static OxHandle Open(HWND window) {
        OxWinData data{};
        OxOpenWinInit(&data, window);
        return OxOpen("events", -1, 0, 9, &data);
    }

    /// Handles this thread's messages until `done` or 2 s have passed.
    static bool PumpUntil(const std::function<bool()>& done) {
        ULONGLONG end = GetTickCount64() + 2000;
        while (!done()) {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
            if (done()) break;
            if (GetTickCount64() >= end) return false;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        }
        return true;
    }
    static void PumpBriefly() {
        ULONGLONG end = GetTickCount64() + 100;
        PumpUntil([&] { return GetTickCount64() >= end; });
    }

    static std::vector<Received> ReceivedOf(UINT message) {
        std::vector<Received> found;
        for (const Received& r : g_received) {
            if (r.message == message) found.push_back(r);
        }
        return found;
    }

    static OxKvwEvent Numeric(std::uint32_t code) {
        OxKvwEvent event{};
        event.type = 17;
        event.matrixCommand.pressed = 1;
        event.matrixCommand.id = code;
        for (std::size_t i = 100; i < sizeof event.raw; ++i) event.raw[i] = static_cast<char>(i);
        return event;
    }

    UINT m_event = 0, m_command = 0, m_sync = 0;
};

TEST_F(DriverEventsTest, SentEventIsAnnouncedToEachWindowAndFetchedOnceInOrder) {
    auto& driver = Hold(L"full");
    auto window = MakeWindow();
    ASSERT_TRUE(window);
    OxHandle windowed = Open(window.Get());
    OxHandle windowless = Open(nullptr);
    ASSERT_NE(windowed, 0u);
    ASSERT_NE(windowless, 0u);

    OxKvwEvent first = Numeric(3), second = Numeric(2);
    EXPECT_EQ(driver.SimDriverSendEvent(&first), 1u) << "only connections with a window";
    EXPECT_EQ(driver.SimDriverSendEvent(&second), 1u);
    EXPECT_EQ(driver.Record("events-waiting"), "2");
    ASSERT_TRUE(PumpUntil([&] { return ReceivedOf(m_event).size() == 2; }));
    EXPECT_EQ(ReceivedOf(m_event)[0].wParam, windowed);

    OxEventData data{};
    OxGetEventWinInit(&data, m_event, windowed, 0);
    OxKvwEvent got{};
    EXPECT_EQ(OxPeekEvent(windowed, 1, &got), kOxIsEvent);
    EXPECT_EQ(got.matrixCommand.id, 3u);
    EXPECT_EQ(OxGetEvent(windowed, 1, &data, &got), kOxIsEvent);
    EXPECT_EQ(std::memcmp(&got, &first, sizeof got), 0) << "the whole record";
    EXPECT_EQ(OxGetEvent(windowed, 1, &data, &got), kOxIsEvent);
    EXPECT_EQ(got.matrixCommand.id, 2u);
    EXPECT_EQ(OxGetEvent(windowed, 1, &data, &got), kOxNoError) << "the queue is empty";
    EXPECT_EQ(OxGetEvent(windowless, 1, &data, &got), kOxNoError);
    EXPECT_EQ(driver.Record("events-waiting"), "0");
    EXPECT_NE(driver.Log().find("OxGetEvent handle=1 flags=1 message=" + std::to_string(m_event) +
                                " event=17"),
              std::string::npos);

    // Stopping the driver drops the connections and what waited for them.
    driver.SimDriverSendEvent(&first);
    driver.SimDriverStop();
    EXPECT_EQ(driver.Record("events-waiting"), "0");
}

TEST_F(DriverEventsTest, CallbackRoadRunsOnTheCallingThreadAndPassesTheResultBack) {
    auto& driver = Hold(L"full");
    OxKvwEvent event = Numeric(9);
    EXPECT_EQ(driver.SimDriverCallEvent(&event), -2) << "no callback registered";

    struct Seen {
        DWORD thread = 0;
        std::uint32_t id = 0;
        const OxKvwEvent* record = nullptr;
        std::int32_t answer = 0;
    } seen;
    auto callback = [](const OxKvwEvent* record, void* context) -> std::int32_t {
        auto* seen = static_cast<Seen*>(context);
        seen->thread = GetCurrentThreadId();
        seen->id = record->matrixCommand.id;
        seen->record = record;
        return seen->answer;
    };
    HMODULE library = GetModuleHandleW(L"oxappdll.dll");
    auto* registerCallback = reinterpret_cast<RegisterCallback_fn*>(
        reinterpret_cast<void (*)()>(GetProcAddress(library, "RegisterCallback")));
    auto* unregisterCallback = reinterpret_cast<UnregisterCallback_fn*>(
        reinterpret_cast<void (*)()>(GetProcAddress(library, "UnregisterCallback")));
    ASSERT_TRUE(registerCallback && unregisterCallback);
    ASSERT_EQ(registerCallback(callback, &seen), kOxNoError);

    DWORD caller = 0;
    std::int32_t result = 0;
    seen.answer = -1;
    std::thread other([&] {
        caller = GetCurrentThreadId();
        result = driver.SimDriverCallEvent(&event);
    });
    other.join();
    EXPECT_EQ(seen.thread, caller);
    EXPECT_NE(seen.thread, GetCurrentThreadId());
    EXPECT_EQ(seen.id, 9u);
    EXPECT_NE(seen.record, &event) << "the library hands over a copy of its own";
    EXPECT_EQ(result, -1);

    seen.answer = 0;
    EXPECT_EQ(driver.SimDriverCallEvent(&event), 0);
    EXPECT_EQ(seen.thread, GetCurrentThreadId());

    unregisterCallback();
    EXPECT_EQ(driver.SimDriverCallEvent(&event), -2);
}

TEST_F(DriverEventsTest, CommandEventReachesEveryLiveWindowThatEverHeldAConnection) {
    auto& driver = Hold(L"full");
    auto kept = MakeWindow();
    auto gone = MakeWindow();
    ASSERT_NE(Open(kept.Get()), 0u);
    ASSERT_NE(Open(gone.Get()), 0u);
    ASSERT_NE(Open(kept.Get()), 0u) << "a window is remembered once";
    gone.Reset();

    driver.SimDriverStop();
    driver.SimDriverStart();
    EXPECT_EQ(driver.SimDriverConnectionCount(), 0u);
    EXPECT_EQ(driver.SimDriverPostCommandEvent(27704), 1u);
    ASSERT_TRUE(PumpUntil([&] { return !ReceivedOf(m_command).empty(); }));
    PumpBriefly();
    ASSERT_EQ(ReceivedOf(m_command).size(), 1u);
    EXPECT_EQ(ReceivedOf(m_command)[0].wParam, 27704u);

    driver.SimDriverReset();
    EXPECT_EQ(driver.SimDriverPostCommandEvent(27704), 0u) << "a fresh driver knows no window";
}

TEST_F(DriverEventsTest, SyncQueryIsAnsweredAsChosen) {
    auto& driver = Hold(L"full");
    auto window = MakeWindow();
    OxHandle handle = Open(window.Get());
    ASSERT_NE(handle, 0u);
    const WPARAM fullSync = ((0x2A00 + handle) & 0xFFFF) << 16 | 2;

    // Posted, by default.
    ASSERT_EQ(OxSyncSendQuery(handle), kOxNoError);
    ASSERT_TRUE(PumpUntil([&] { return !ReceivedOf(m_sync).empty(); }));
    EXPECT_EQ(ReceivedOf(m_sync)[0].wParam, fullSync);
    EXPECT_FALSE(ReceivedOf(m_sync)[0].sentFromOtherThread);

    // Ignored.
    driver.SimDriverSetSyncAnswer(0);
    ASSERT_EQ(OxSyncSendQuery(handle), kOxNoError);
    PumpBriefly();
    EXPECT_EQ(ReceivedOf(m_sync).size(), 1u);

    // Sent from a thread of the driver's, which waits for this thread to take it.
    driver.SimDriverSetSyncAnswer(2);
    ASSERT_EQ(OxSyncSendQuery(handle), kOxNoError);
    ASSERT_TRUE(PumpUntil([&] { return ReceivedOf(m_sync).size() == 2; }));
    EXPECT_EQ(ReceivedOf(m_sync)[1].wParam, fullSync);
    EXPECT_TRUE(ReceivedOf(m_sync)[1].sentFromOtherThread);
    EXPECT_EQ(driver.Record("sync-queries"), "3");

    // A reset waits for the sender, taking its message meanwhile rather than blocking it.
    ASSERT_EQ(OxSyncSendQuery(handle), kOxNoError);
    ULONGLONG before = GetTickCount64();
    driver.SimDriverReset();
    EXPECT_LT(GetTickCount64() - before, 2000u);
    EXPECT_EQ(ReceivedOf(m_sync).size(), 3u);
}

TEST_F(DriverEventsTest, LogCanBeSwitchedOffWhileCallsAreStillCounted) {
    auto& driver = Hold(L"full");
    driver.SimDriverSetLogging(0);
    OxHandle handle = Open(nullptr);
    ASSERT_NE(handle, 0u);
    oxActionNodeEx_s root{sizeof(oxActionNodeEx_s), 0, nullptr, nullptr, "Part", "Part", ""};
    EXPECT_EQ(OxAppCmdWriteActions(handle, &root), kOxNoError);
    EXPECT_EQ(driver.Log(), "");
    EXPECT_EQ(driver.SimDriverCallCount("OxOpen"), 1u);
    EXPECT_EQ(driver.SimDriverCallCount("OxAppCmdWriteActions"), 1u);

    driver.SimDriverSetLogging(1);
    EXPECT_EQ(OxAppCmdWriteActions(handle, &root), kOxNoError);
    EXPECT_EQ(driver.Log(), "OxAppCmdWriteActions handle=1 root=\"Part\" nodes=1\n");
}

}  // namespace
}  // namespace qvx::testing
