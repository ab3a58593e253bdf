// The simulated host's mouse tracking on Windows: a nested message loop that ends when a
// mouse move reaches the graphics window, which gives the point under it. Without a graphics
// window the session's cursor answers at once.
#include "sim/host/host_entry.h"
#include "sim/host/session.h"
#include "support/windows_api.h"

namespace sim {
namespace {

// Gives up after this long, as a stand-in host must never hang its test.
constexpr ULONGLONG kTrackLimitMs = 3000;

ProError MouseTrack(int, int*, double* point) {
    CSession& s = CSession::Instance();
    s.Record("ProMouseTrack");
    if (!s.model || !point) return PRO_TK_GENERAL_ERROR;
    HWND window = static_cast<HWND>(s.graphicsWindow);
    if (!window) {
        if (!s.cursor) return PRO_TK_GENERAL_ERROR;
        Point3 p = s.PanZoomPoint(*s.cursor);
        for (int i = 0; i < 3; ++i) point[i] = p[i];
        s.lastTrack = CSession::CTrackedPoint{p, *s.cursor};
        return PRO_TK_NO_ERROR;
    }
    ULONGLONG end = GetTickCount64() + kTrackLimitMs;
    while (GetTickCount64() < end) {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            if (msg.message == WM_QUIT) {
                PostQuitMessage(static_cast<int>(msg.wParam));
                return PRO_TK_USER_ABORT;
            }
            if (msg.message == WM_MOUSEMOVE && msg.hwnd == window) {
                RECT rect{};
                GetClientRect(window, &rect);
                double w = rect.right > 0 ? rect.right : 1, h = rect.bottom > 0 ? rect.bottom : 1;
                double x = static_cast<short>(LOWORD(msg.lParam));
                double y = static_cast<short>(HIWORD(msg.lParam));
                Point3 at = {x * kWindowWidth / w, (h - y) * kWindowHeight / h, 0};
                Point3 p = s.PanZoomPoint(at);
                for (int i = 0; i < 3; ++i) point[i] = p[i];
                s.lastTrack = CSession::CTrackedPoint{p, at};
                s.Record("ProMouseTrack at " + std::to_string(static_cast<int>(x)) + "," +
                         std::to_string(static_cast<int>(y)));
                return PRO_TK_NO_ERROR;
            }
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return PRO_TK_GENERAL_ERROR;
}

}  // namespace

void AddMouseFunctions(std::vector<QvxHostFunction>& table) {
    AddHostFunction<&MouseTrack>(table, "ProMouseTrack_v");
}

}  // namespace sim
