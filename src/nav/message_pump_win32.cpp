// The pump of the host's main thread while an animation runs.
#include "nav/message_pump.h"

#include "support/os.h"
#include "support/win32_handles.h"

#include <mmsystem.h>

namespace qvx::nav {
namespace {

std::int64_t NowMs() { return static_cast<std::int64_t>(os::MonotonicMs()); }

}  // namespace

bool PumpMessages(unsigned ms) {
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
        std::int64_t now = NowMs();
        DWORD timeout = now >= end ? 0 : static_cast<DWORD>(end - now);
        DWORD result = MsgWaitForMultipleObjects(count, handles, FALSE, timeout,
                                                 /*QS_ALLINPUT|QS_ALLPOSTMESSAGE=*/0x4FF);
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

std::int64_t AnimationNowMs() { return NowMs(); }

CTimerPeriodScope::CTimerPeriodScope() {
    TIMECAPS caps{};
    if (timeGetDevCaps(&caps, sizeof caps) == MMSYSERR_NOERROR) {
        m_period = caps.wPeriodMin;
        m_raised = timeBeginPeriod(m_period) == TIMERR_NOERROR;
    }
}

CTimerPeriodScope::~CTimerPeriodScope() {
    if (m_raised) timeEndPeriod(m_period);
}

}  // namespace qvx::nav
