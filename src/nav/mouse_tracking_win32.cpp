// Mouse tracking with the pointer wiggler thread.
#include "nav/mouse_tracking.h"

#include "support/windows_api.h"
#include "toolkit/pro_toolkit.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

namespace qvx::nav {
namespace {

void DropMouseMessages(HWND window) {
    MSG msg;
    while (PeekMessageW(&msg, window, WM_MOUSEFIRST, 0x20E, PM_REMOVE | PM_NOYIELD)) {
    }
}

LPARAM Packed(POINT p) {
    return static_cast<LPARAM>((static_cast<DWORD>(p.y & 0xFFFF) << 16) |
                               static_cast<DWORD>(p.x & 0xFFFF));
}

// Posts a mouse move one pixel to each side of the cursor, every 10 ms, until stopped; then
// puts the cursor back exactly where it was.
void Wiggle(std::stop_token stop, HWND window) {
    POINT screen{};
    GetCursorPos(&screen);
    POINT client = screen;
    ScreenToClient(window, &client);
    std::mutex mutex;
    std::condition_variable_any wake;
    std::unique_lock lock(mutex);
    for (int side = 1; !stop.stop_requested(); side = -side) {
        POINT p{client.x + side, client.y + side};
        PostMessageW(window, WM_MOUSEMOVE, 0, Packed(p));
        wake.wait_for(lock, stop, std::chrono::milliseconds(10), [] { return false; });
    }
    SetCursorPos(screen.x, screen.y);
}

}  // namespace

void* LookUpHostGraphicsWindow() {
    HDC dc = wglGetCurrentDC();
    return dc ? WindowFromDC(dc) : nullptr;
}

void TrackWithWiggler(void* handle, int option, int* state, double point[3]) {
    HWND window = static_cast<HWND>(handle);
    DropMouseMessages(window);
    {
        std::jthread wiggler(Wiggle, window);
        ProMouseTrack(option, state, point);
        // Leaving the scope stops the thread and joins it.
    }
    DropMouseMessages(window);
}

}  // namespace qvx::nav
