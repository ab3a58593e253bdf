// The main thread's loop on Windows: the thread's own message queue, the performance counter,
// the multimedia timer period and thread timers of SetTimer.
#include "support/main_loop.h"

#include "support/boundary.h"
#include "support/os.h"
#include "support/win32_handles.h"

#include <mmsystem.h>

#include <map>

namespace qvx {
namespace {

// The callbacks of the running thread timers by id; the system calls one function for all.
std::map<UINT_PTR, void (*)()>& TimerCallbacks() {
    static std::map<UINT_PTR, void (*)()> callbacks;
    return callbacks;
}

void CALLBACK OnThreadTimer(HWND, UINT, UINT_PTR id, DWORD) {
    // Called from inside whichever message loop runs, the host's own included.
    CallAtBoundary("OnThreadTimer", [id] {
        auto it = TimerCallbacks().find(id);
        if (it != TimerCallbacks().end()) it->second();
    });
}

// The wait wakes for every kind of input, raw input and posted messages included.
static_assert(QS_ALLINPUT == 0x4FF);

class CWin32MainLoop final : public IMainLoop {
public:
    std::int64_t NowMs() override { return static_cast<std::int64_t>(os::MonotonicMs()); }

    bool PumpMessages(unsigned ms) override {
        const std::int64_t end = NowMs() + ms;
        // Manual reset; due ten times later than the wait, so the time-out always comes first.
        ovklib::CKernelHandle timer(CreateWaitableTimerW(nullptr, TRUE, nullptr));
        HANDLE handles[2] = {GetCurrentThread(), timer.Get()};
        DWORD count = 1;
        if (timer) {
            LARGE_INTEGER due;
            due.QuadPart = static_cast<LONGLONG>(ms) * -100000;
            SetWaitableTimer(timer.Get(), &due, 0, nullptr, nullptr, FALSE);
            count = 2;
        }
        for (;;) {
            const std::int64_t now = NowMs();
            const DWORD timeout = now >= end ? 0 : static_cast<DWORD>(end - now);
            // Input already in the queue counts: without it a message the thread has seen
            // (by any peek, the host's own filtered ones included) would not end the wait,
            // and a timer message could sit there for as long as nothing new arrives.
            const DWORD result = MsgWaitForMultipleObjectsEx(count, handles, timeout, QS_ALLINPUT,
                                                             MWMO_INPUTAVAILABLE);
            if (result != WAIT_OBJECT_0 + count || timeout == 0) return false;
            MSG msg;
            if (!PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE)) continue;
            do {
                if (msg.message == WM_QUIT) return true;
                if (GetMessageW(&msg, nullptr, 0, 0) <= 0) return true;
                TranslateMessage(&msg);
                DispatchMessageW(&msg);
                if (NowMs() >= end) return false;
            } while (PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE));
        }
    }

    unsigned BeginTimerPeriod() override {
        TIMECAPS caps{};
        if (timeGetDevCaps(&caps, sizeof caps) != MMSYSERR_NOERROR) return 0;
        return timeBeginPeriod(caps.wPeriodMin) == TIMERR_NOERROR ? caps.wPeriodMin : 0;
    }

    void EndTimerPeriod(unsigned period) override {
        if (period != 0) timeEndPeriod(period);
    }

    std::uint32_t StartThreadTimer(std::uint32_t id, std::uint32_t periodMs,
                                   void (*callback)()) override {
        const UINT_PTR started = SetTimer(nullptr, id, periodMs, &OnThreadTimer);
        if (started) TimerCallbacks()[started] = callback;
        return static_cast<std::uint32_t>(started);
    }

    void StopThreadTimer(std::uint32_t id) override {
        KillTimer(nullptr, id);
        TimerCallbacks().erase(id);
    }

    bool PostCommand(std::uint32_t commandId) override {
        return PostThreadMessageW(GetCurrentThreadId(), WM_COMMAND, commandId, 0) != FALSE;
    }
};

}  // namespace

IMainLoop& SystemMainLoop() {
    static CWin32MainLoop loop;
    return loop;
}

}  // namespace qvx
