// What the plug-in's main thread needs from time and from its message loop, behind one
// interface: the clock, the wait that keeps messages flowing, the raised timer resolution,
// thread timers, and commands posted to the thread itself. The system's loop is installed by
// default (Win32: the thread's real queue; native: the steady clock and no messages); a test
// installs its own to run time and messages as it pleases.
#pragma once

#include <cstdint>

namespace qvx {

class IMainLoop {
public:
    /// Milliseconds of a clock that never goes back.
    virtual std::int64_t NowMs() = 0;
    /// Waits `ms` milliseconds while dispatching this thread's messages. Returns true, leaving
    /// the message queued, as soon as a quit message is waiting; false after the wait.
    virtual bool PumpMessages(unsigned ms) = 0;
    /// Raises the system timer resolution to the finest the device offers. Returns the period
    /// to give back to EndTimerPeriod, or 0 when nothing was raised.
    virtual unsigned BeginTimerPeriod() = 0;
    virtual void EndTimerPeriod(unsigned period) = 0;
    /// Starts a timer of this thread (no window) that calls `callback` every `periodMs` from
    /// the thread's message loop; `id` 0 asks for a new id, an id in use restarts that timer.
    /// Returns the timer's id, 0 on failure.
    virtual std::uint32_t StartThreadTimer(std::uint32_t id, std::uint32_t periodMs,
                                           void (*callback)()) = 0;
    virtual void StopThreadTimer(std::uint32_t id) = 0;
    /// Posts a window command (WM_COMMAND, wParam `commandId`, lParam 0) to this thread, as a
    /// menu would; true when it was posted.
    virtual bool PostCommand(std::uint32_t commandId) = 0;

protected:
    ~IMainLoop() = default;
};

/// The loop in use: the system's unless a test installed another.
IMainLoop& MainLoop();
/// Installs `loop` (which must outlive its installation); null puts the system's back.
void SetMainLoop(IMainLoop* loop);
/// The system's loop, whatever is installed.
IMainLoop& SystemMainLoop();

/// A running thread timer, owned: the destructor stops it. Move-only; the timer stays with the
/// loop that started it.
class CThreadTimer {
public:
    CThreadTimer() = default;
    CThreadTimer(const CThreadTimer&) = delete;
    CThreadTimer& operator=(const CThreadTimer&) = delete;
    CThreadTimer(CThreadTimer&& other) noexcept;
    CThreadTimer& operator=(CThreadTimer&& other) noexcept;
    ~CThreadTimer() { Stop(); }

    /// Starts the timer on the installed loop, reusing this timer's id when it has one.
    /// False when the system refused; the timer is then stopped.
    bool Start(std::uint32_t periodMs, void (*callback)());
    /// Stops the timer; nothing when none runs.
    void Stop();
    /// The system's id of the timer; 0 while none runs.
    std::uint32_t Id() const { return m_id; }

private:
    IMainLoop* m_loop = nullptr;
    std::uint32_t m_id = 0;
};

}  // namespace qvx
