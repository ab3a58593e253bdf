// Mouse tracking with the pointer wiggler thread.
#include "nav/mouse_tracking.h"
#include "nav/mouse_tracking_win32.h"

#include "support/boundary.h"
#include "toolkit/pro_toolkit.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

namespace qvx::nav {
namespace {

static_assert(WM_MOUSELAST == 0x20E, "mouse messages up to the horizontal wheel");

void DropMouseMessages(HWND window) {
    MSG msg;
    while (PeekMessageW(&msg, window, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE | PM_NOYIELD)) {
    }
}

LPARAM Packed(POINT p) {
    return static_cast<LPARAM>((static_cast<DWORD>(p.y & 0xFFFF) << 16) |
                               static_cast<DWORD>(p.x & 0xFFFF));
}

void PostMouseMove(HWND window, POINT client) {
    PostMessageW(window, WM_MOUSEMOVE, 0, Packed(client));
}

// Read on the main thread as a wiggler starts; each wiggler runs a copy of its own.
WiggleStep& Step() {
    static WiggleStep step;
    return step;
}

/// Puts the cursor back where it was, on every way out of the wiggler.
class CCursorRestore {
public:
    explicit CCursorRestore(POINT screen) : m_screen(screen) {}
    ~CCursorRestore() { SetCursorPos(m_screen.x, m_screen.y); }
    CCursorRestore(const CCursorRestore&) = delete;
    CCursorRestore& operator=(const CCursorRestore&) = delete;

private:
    POINT m_screen;
};

// Posts a mouse move one pixel to each side of the cursor, every 10 ms, until stopped; then
// puts the cursor back exactly where it was.
void Wiggle(std::stop_token stop, HWND window, const WiggleStep& step) {
    POINT screen{};
    GetCursorPos(&screen);
    CCursorRestore restore(screen);
    POINT client = screen;
    ScreenToClient(window, &client);
    std::mutex mutex;
    std::condition_variable_any wake;
    std::unique_lock lock(mutex);
    for (int side = 1; !stop.stop_requested(); side = -side) {
        step(window, POINT{client.x + side, client.y + side});
        wake.wait_for(lock, stop, std::chrono::milliseconds(10), [] { return false; });
    }
}

}  // namespace

void SetWiggleStep(WiggleStep step) { Step() = std::move(step); }

void* LookUpHostGraphicsWindow() {
    HDC dc = wglGetCurrentDC();
    return dc ? WindowFromDC(dc) : nullptr;
}

void TrackWithWiggler(void* handle, int option, int* state, double point[3]) {
    HWND window = static_cast<HWND>(handle);
    DropMouseMessages(window);
    {
        WiggleStep step = Step() ? Step() : WiggleStep(&PostMouseMove);
        // The thread's own body is a boundary: a failure ends the wiggling, not the process.
        std::jthread wiggler([window, step = std::move(step)](std::stop_token stop) {
            CallAtBoundary("Wiggle", [&] { Wiggle(stop, window, step); });
        });
        ProMouseTrack(option, state, point);
        // Leaving the scope stops the thread and joins it.
    }
    DropMouseMessages(window);
}

}  // namespace qvx::nav
