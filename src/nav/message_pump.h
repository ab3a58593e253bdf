// Waiting on the host's main thread while its messages keep flowing: the animation's frame
// wait, its clock and the raised timer resolution, all through the main thread's loop.
#pragma once

#include <cstdint>

namespace qvx {
class IMainLoop;
}

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
    IMainLoop& m_loop;
    unsigned m_period;
};

}  // namespace qvx::nav
