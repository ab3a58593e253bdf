// Mouse tracking with the pointer wiggler thread.
#include "nav/mouse_tracking.h"
#include "nav/mouse_tracking_win32.h"

#include "support/boundary.h"
#include "support/win32_handles.h"
#include "toolkit/pro_toolkit.h"

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

// Posts a mouse move one pixel to each side of the cursor, every 10 ms, until `stop` is set;
// then puts the cursor back exactly where it was.
void Wiggle(HANDLE stop, HWND window, const WiggleStep& step) {
    POINT screen{};
    GetCursorPos(&screen);
    CCursorRestore restore(screen);
    POINT client = screen;
    ScreenToClient(window, &client);
    for (int side = 1;; side = -side) {
        step(window, POINT{client.x + side, client.y + side});
        if (WaitForSingleObject(stop, 10) != WAIT_TIMEOUT) break;
    }
}

/// The wiggler's thread for one tracking call: started by the constructor, stopped and
/// joined by the destructor on every way out, a throwing host call included.
///
/// The stop is an event of the system's rather than a std::stop_token: the runtime's stop
/// callbacks and timed waits, under the thread library this DLL is built with, now and then
/// lose the stop, and the main thread then waits in the join for good.
class CWiggler {
public:
    CWiggler(HWND window, WiggleStep step)
        : m_stop(CreateEventW(nullptr, /*bManualReset=*/TRUE, /*bInitialState=*/FALSE, nullptr)) {
        if (!m_stop) return;
        HANDLE stop = m_stop.Get();
        // The thread's own body is a boundary: a failure ends the wiggling, not the process.
        m_thread = std::thread([stop, window, step = std::move(step)] {
            CallAtBoundary("Wiggle", [&] { Wiggle(stop, window, step); });
        });
    }
    ~CWiggler() {
        if (!m_thread.joinable()) return;
        SetEvent(m_stop.Get());
        m_thread.join();
    }
    CWiggler(const CWiggler&) = delete;
    CWiggler& operator=(const CWiggler&) = delete;

private:
    ovklib::CKernelHandle m_stop;
    std::thread m_thread;
};

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
        CWiggler wiggler(window, Step() ? Step() : WiggleStep(&PostMouseMove));
        ProMouseTrack(option, state, point);
    }
    DropMouseMessages(window);
}

}  // namespace qvx::nav
