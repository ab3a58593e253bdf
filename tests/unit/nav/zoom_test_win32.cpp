// The zoom on Windows, in real time, since these tests are about the system's side: the
// message pump, a quit message, timers of the thread, and mouse tracking with the pointer
// wiggler thread against a real window. Each waits a few tens of milliseconds at most.
#include "nav_fixture.h"

#include "nav/command_codes.h"
#include "nav/message_pump.h"
#include "nav/mouse_tracking.h"
#include "nav/mouse_tracking_win32.h"
#include "support/boundary.h"
#include "support/main_loop.h"
#include "support/win32_handles.h"

#include <memory>
#include <stdexcept>

namespace qvx::testing {
namespace {

std::unique_ptr<std::function<void()>> g_event;

void CALLBACK RunEvent(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    if (auto event = std::move(g_event)) (*event)();
}

/// Delivers `event` from a thread timer 20 ms from now, through whatever loop then runs.
void DeliverSoon(std::function<void()> event) {
    g_event = std::make_unique<std::function<void()>>(std::move(event));
    SetTimer(nullptr, 0, 20, &RunEvent);
}

TEST(MessagePumpTest, QuitIsReportedAndLeftInTheQueue) {
    PostQuitMessage(7);
    EXPECT_TRUE(nav::PumpMessages(50));
    MSG msg;
    ASSERT_TRUE(PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(msg.wParam, 7u);
}

TEST(MessagePumpTest, DispatchesWhatArrivesAndReturnsAfterTheWait) {
    static int ticks = 0;
    ticks = 0;
    UINT_PTR id = SetTimer(nullptr, 0, 5, [](HWND, UINT, UINT_PTR, DWORD) { ++ticks; });
    std::int64_t start = nav::AnimationNowMs();
    EXPECT_FALSE(nav::PumpMessages(60));
    KillTimer(nullptr, id);
    EXPECT_GE(nav::AnimationNowMs() - start, 60);
    EXPECT_GT(ticks, 0);
}

// The plug-in on the system's own loop, in real time.
class ZoomWin32Test : public NavTest {
protected:
    void SetUp() override {
        NavTest::SetUp();
        SetMainLoop(nullptr);
    }
};

TEST_F(ZoomWin32Test, TapZoomsByFiveInRealTimeAndRestoresTheOption) {
    double before = Host().panZoom[0][0];
    DeliverSoon([] { Send(V3DCMD_ZOOM_IN, false); });
    Send(V3DCMD_ZOOM_IN, true);
    EXPECT_DOUBLE_EQ(Host().panZoom[0][0], 5.0 * before);
    EXPECT_GE(Host().panZoomFrames.size(), 10u);
    EXPECT_EQ(Host().configOptions[L"max_animation_time"], L"1.0");
}

TEST_F(ZoomWin32Test, QuitDuringTheAnimationEndsItExactlyAndStaysQueued) {
    double before = Host().panZoom[0][0];
    DeliverSoon([] {
        Send(V3DCMD_ZOOM_OUT, false);
        PostQuitMessage(0);
    });
    Send(V3DCMD_ZOOM_OUT, true);
    // The release and the quit came in the tap-or-hold wait: the driver left without a step.
    EXPECT_DOUBLE_EQ(Host().panZoom[0][0], before);
    EXPECT_EQ(Host().configOptions[L"max_animation_time"], L"1.0");
    MSG msg;
    EXPECT_TRUE(PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
}

LRESULT CALLBACK PlainWindowProc(HWND window, UINT message, WPARAM w, LPARAM l) {
    return DefWindowProcW(window, message, w, l);
}

// Tracking against a real graphics window, with the cursor inside it.
class TrackingWin32Test : public ZoomWin32Test {
protected:
    void SetUp() override {
        ZoomWin32Test::SetUp();
        WNDCLASSW cls{};
        cls.lpfnWndProc = &PlainWindowProc;
        cls.hInstance = GetModuleHandleW(nullptr);
        cls.lpszClassName = L"QvxTestGraphics";
        RegisterClassW(&cls);
        m_window.Reset(CreateWindowExW(0, L"QvxTestGraphics", L"graphics",
                                       WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 400, 300,
                                       nullptr, nullptr, cls.hInstance, nullptr));
        ASSERT_TRUE(m_window);
        SetCursorPos(250, 220);
        GetCursorPos(&m_cursor);
        HWND handle = m_window.Get();
        nav::SetHostGraphicsWindowLookup([handle]() -> void* { return handle; });
        Host().graphicsWindow = handle;
    }
    void TearDown() override {
        nav::SetHostGraphicsWindowLookup(nullptr);
        Host().graphicsWindow = nullptr;
        ZoomWin32Test::TearDown();
    }

    void Track() {
        double point[3] = {0, 0, 0};
        int state = 0;
        nav::TrackMousePosition(0, &state, point);
    }
    void ExpectTrackedAndCursorBack() {
        POINT after{};
        GetCursorPos(&after);
        EXPECT_EQ(after.x, m_cursor.x);
        EXPECT_EQ(after.y, m_cursor.y);
        bool tracked = false;
        for (const auto& call : Host().calls)
            tracked = tracked || call.rfind("ProMouseTrack at", 0) == 0;
        EXPECT_TRUE(tracked) << "the wiggler's move never reached the window";
        MSG msg;
        EXPECT_FALSE(PeekMessageW(&msg, m_window.Get(), WM_MOUSEFIRST, WM_MOUSELAST, PM_NOREMOVE))
            << "mouse messages are left behind";
    }

    ovklib::CWindowHandle m_window;
    POINT m_cursor{};
};

TEST_F(TrackingWin32Test, FindsThePointUnderTheCursorAndPutsTheCursorBack) {
    Track();
    ExpectTrackedAndCursorBack();
}

TEST_F(TrackingWin32Test, WigglerThatThrowsEndsItsThreadOnlyAndTheCursorComesBack) {
    nav::SetWiggleStep([](HWND window, POINT client) {
        PostMessageW(window, WM_MOUSEMOVE, 0, MAKELPARAM(client.x, client.y));
        throw std::runtime_error("no more moves");
    });
    const std::uint64_t before = BoundaryCatchCount();
    ::testing::internal::CaptureStdout();
    Track();
    std::string out = ::testing::internal::GetCapturedStdout();
    nav::SetWiggleStep(nullptr);
    EXPECT_EQ(BoundaryCatchCount() - before, 1u);
    EXPECT_EQ(out, "Wiggle failed error=no more moves\n");
    ExpectTrackedAndCursorBack();
}

}  // namespace
}  // namespace qvx::testing
