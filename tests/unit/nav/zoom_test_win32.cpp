// The zoom on Windows, in real time: the message pump, a quit message, and mouse tracking with
// the pointer wiggler against a real window.
#include "nav_fixture.h"

#include "nav/command_codes.h"
#include "nav/message_pump.h"
#include "nav/mouse_tracking.h"
#include "support/win32_handles.h"

namespace qvx::testing {
namespace {

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

class ZoomWin32Test : public NavTest {};

TEST_F(ZoomWin32Test, TapZoomsByFiveInRealTimeAndRestoresTheOption) {
    double before = Host().panZoom[0][0];
    PumpSoon([] { Send(V3DCMD_ZOOM_IN, false); });
    Send(V3DCMD_ZOOM_IN, true);
    EXPECT_DOUBLE_EQ(Host().panZoom[0][0], 5.0 * before);
    EXPECT_GE(Host().panZoomFrames.size(), 10u);
    EXPECT_EQ(Host().configOptions[L"max_animation_time"], L"1.0");
}

TEST_F(ZoomWin32Test, QuitDuringTheAnimationEndsItExactlyAndStaysQueued) {
    double before = Host().panZoom[0][0];
    PumpSoon([] {
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

TEST_F(ZoomWin32Test, TrackingFindsThePointUnderTheCursorAndPutsTheCursorBack) {
    WNDCLASSW cls{};
    cls.lpfnWndProc = &PlainWindowProc;
    cls.hInstance = GetModuleHandleW(nullptr);
    cls.lpszClassName = L"QvxTestGraphics";
    RegisterClassW(&cls);
    ovklib::CWindowHandle window(CreateWindowExW(0, L"QvxTestGraphics", L"graphics",
                                                 WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 400,
                                                 300, nullptr, nullptr, cls.hInstance, nullptr));
    ASSERT_TRUE(window);
    SetCursorPos(250, 220);
    POINT before{};
    GetCursorPos(&before);
    nav::SetHostGraphicsWindowForTest(window.Get());
    Host().graphicsWindow = window.Get();

    double point[3] = {0, 0, 0};
    int state = 0;
    nav::TrackMousePosition(0, &state, point);

    nav::SetHostGraphicsWindowForTest(nullptr);
    Host().graphicsWindow = nullptr;
    POINT after{};
    GetCursorPos(&after);
    EXPECT_EQ(after.x, before.x);
    EXPECT_EQ(after.y, before.y);
    bool tracked = false;
    for (const auto& call : Host().calls)
        tracked = tracked || call.rfind("ProMouseTrack at", 0) == 0;
    EXPECT_TRUE(tracked) << "the wiggler's move never reached the window";
    MSG msg;
    EXPECT_FALSE(PeekMessageW(&msg, window.Get(), WM_MOUSEFIRST, 0x20E, PM_NOREMOVE))
        << "mouse messages are left behind";
}

}  // namespace
}  // namespace qvx::testing
