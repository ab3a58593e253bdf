// Test controls of the native build's virtual animation clock and message queue.
#pragma once

#include <cstdint>
#include <functional>

namespace qvx::nav {

/// Runs `event` when the virtual clock reaches `atMs`, from inside a PumpMessages call, as a
/// dispatched message would.
void ScheduleForTest(std::int64_t atMs, std::function<void()> event);
/// Puts a quit message in the queue (it stays until ClearQuitForTest).
void PostQuitForTest();
/// Empties the queue of events and quit, and sets the clock to 0.
void ResetMessagesForTest();
/// The raised timer periods that are open right now.
int OpenTimerPeriodsForTest();

}  // namespace qvx::nav
