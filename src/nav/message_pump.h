// Waiting on the host's main thread while its messages keep flowing: the animation's frame
// wait, its clock and the raised timer resolution. The native build runs a virtual clock that
// only the pump advances, with test events scheduled on it (see message_pump_posix.h).
#pragma once

#include <cstdint>

namespace qvx::nav {

/// Waits `ms` milliseconds while dispatching this thread's messages. Returns true, leaving
/// the message queued, as soon as a quit message is waiting.
bool PumpMessages(unsigned ms);

/// Milliseconds of the animation clock.
std::int64_t AnimationNowMs();

/// Raises the system timer resolution to the finest the device offers for the scope's length;
/// does nothing where that cannot be had.
class CTimerPeriodScope {
public:
    CTimerPeriodScope();
    CTimerPeriodScope(const CTimerPeriodScope&) = delete;
    CTimerPeriodScope& operator=(const CTimerPeriodScope&) = delete;
    ~CTimerPeriodScope();

private:
    unsigned m_period = 0;
    bool m_raised = false;
};

}  // namespace qvx::nav
