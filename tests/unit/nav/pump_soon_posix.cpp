#include "nav/message_pump.h"
#include "nav/message_pump_posix.h"
#include "nav_fixture.h"

namespace qvx::testing {

void NavTest::PumpSoon(std::function<void()> event) {
    nav::ScheduleForTest(nav::AnimationNowMs() + 20, std::move(event));
}

}  // namespace qvx::testing
