#include "nav/message_pump.h"

#include "support/main_loop.h"

namespace qvx::nav {

bool PumpMessages(unsigned ms) { return MainLoop().PumpMessages(ms); }

std::int64_t AnimationNowMs() { return MainLoop().NowMs(); }

// The period goes back to the loop that raised it, whatever is installed meanwhile.
CTimerPeriodScope::CTimerPeriodScope() : m_loop(MainLoop()), m_period(m_loop.BeginTimerPeriod()) {}

CTimerPeriodScope::~CTimerPeriodScope() { m_loop.EndTimerPeriod(m_period); }

}  // namespace qvx::nav
