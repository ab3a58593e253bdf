// A main loop for tests: a virtual clock that only waits advance, events scheduled on it and
// run from inside a wait as dispatched messages would be, a quit message, thread timers that
// fire when the test says, and a record of posted commands. Installed for as long as it lives.
#pragma once

#include "support/main_loop.h"

#include <cstdint>
#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace qvx::testing {

class CFakeMainLoop final : public IMainLoop {
public:
    CFakeMainLoop() { SetMainLoop(this); }
    ~CFakeMainLoop() { SetMainLoop(nullptr); }
    CFakeMainLoop(const CFakeMainLoop&) = delete;
    CFakeMainLoop& operator=(const CFakeMainLoop&) = delete;

    std::int64_t NowMs() override { return m_now; }

    bool PumpMessages(unsigned ms) override {
        const std::int64_t end = m_now + ms;
        for (;;) {
            if (m_quit) return true;
            auto next = m_events.begin();
            if (next == m_events.end() || next->first > end) break;
            if (next->first > m_now) m_now = next->first;
            auto event = std::move(next->second);
            m_events.erase(next);
            event();
        }
        m_now = end;
        return false;
    }

    unsigned BeginTimerPeriod() override {
        ++m_openPeriods;
        return 1;
    }
    void EndTimerPeriod(unsigned period) override {
        if (period != 0) --m_openPeriods;
    }

    std::uint32_t StartThreadTimer(std::uint32_t id, std::uint32_t periodMs,
                                   void (*callback)()) override {
        if (id == 0) id = m_nextTimerId++;
        m_timers[id] = {periodMs, callback};
        return id;
    }
    void StopThreadTimer(std::uint32_t id) override { m_timers.erase(id); }

    bool PostCommand(std::uint32_t commandId) override {
        m_posted.push_back(commandId);
        return true;
    }

    /// Runs `event` when the clock reaches `atMs`, from inside a wait.
    void Schedule(std::int64_t atMs, std::function<void()> event) {
        m_events.emplace(atMs, std::move(event));
    }
    /// Puts a quit message in the queue; it stays there until Reset.
    void PostQuit() { m_quit = true; }
    /// Empties the queue of events and quit, and sets the clock to 0.
    void Reset() {
        m_events.clear();
        m_quit = false;
        m_now = 0;
    }
    /// The raised timer periods that are open right now.
    int OpenTimerPeriods() const { return m_openPeriods; }
    /// Runs every running thread timer's callback once; returns how many ran.
    std::size_t FireTimers() {
        // Copied first: a callback may stop its own timer.
        auto timers = m_timers;
        for (auto& [id, timer] : timers) timer.second();
        return timers.size();
    }
    std::size_t RunningTimers() const { return m_timers.size(); }
    /// The period a running timer was started with; 0 for none.
    std::uint32_t PeriodOf(std::uint32_t id) const {
        auto it = m_timers.find(id);
        return it == m_timers.end() ? 0 : it->second.first;
    }
    /// The commands posted so far; the list is emptied.
    std::vector<std::uint32_t> TakePosted() { return std::exchange(m_posted, {}); }

private:
    std::int64_t m_now = 0;
    bool m_quit = false;
    int m_openPeriods = 0;
    std::multimap<std::int64_t, std::function<void()>> m_events;
    std::map<std::uint32_t, std::pair<std::uint32_t, void (*)()>> m_timers;
    std::uint32_t m_nextTimerId = 1;
    std::vector<std::uint32_t> m_posted;
};

}  // namespace qvx::testing
