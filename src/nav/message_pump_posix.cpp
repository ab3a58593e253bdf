// The native build's pump: a virtual clock that waits advance, and scheduled test events.
#include "nav/message_pump.h"
#include "nav/message_pump_posix.h"

#include <map>

namespace qvx::nav {
namespace {

std::int64_t g_now = 0;
bool g_quit = false;
int g_openPeriods = 0;
std::multimap<std::int64_t, std::function<void()>> g_events;

}  // namespace

bool PumpMessages(unsigned ms) {
    const std::int64_t end = g_now + ms;
    for (;;) {
        if (g_quit) return true;
        auto next = g_events.begin();
        if (next == g_events.end() || next->first > end) break;
        if (next->first > g_now) g_now = next->first;
        auto event = std::move(next->second);
        g_events.erase(next);
        event();
    }
    g_now = end;
    return false;
}

std::int64_t AnimationNowMs() { return g_now; }

CTimerPeriodScope::CTimerPeriodScope() : m_period(1), m_raised(true) { ++g_openPeriods; }
CTimerPeriodScope::~CTimerPeriodScope() {
    if (m_raised) --g_openPeriods;
}

void ScheduleForTest(std::int64_t atMs, std::function<void()> event) {
    g_events.emplace(atMs, std::move(event));
}
void PostQuitForTest() { g_quit = true; }
void ResetMessagesForTest() {
    g_events.clear();
    g_quit = false;
    g_now = 0;
}
int OpenTimerPeriodsForTest() { return g_openPeriods; }

}  // namespace qvx::nav
