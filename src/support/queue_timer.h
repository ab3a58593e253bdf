// One timer of a CTimerQueue, owned: the system timer is cancelled when the owner goes, so no
// slot ever forgets a timer that is still registered. Windows only.
//
// Cancelling does not wait (see CTimerQueue): a callback that has begun runs to its end after
// Cancel or the destructor return. Its parameter must therefore be something that outlives the
// owner, or nothing that can dangle (a window handle, say).
#pragma once

#include "support/timer_queue.h"

namespace ovklib {

class CQueueTimer {
public:
    CQueueTimer() = default;
    CQueueTimer(const CQueueTimer&) = delete;
    CQueueTimer& operator=(const CQueueTimer&) = delete;
    CQueueTimer(CQueueTimer&& other) noexcept;
    CQueueTimer& operator=(CQueueTimer&& other) noexcept;
    ~CQueueTimer() { Cancel(); }

    /// Cancels the timer held, then starts one on `queue`, which must outlive this object or
    /// see it cancelled first. A period of 0 makes a one-shot; `flags` are the system's. A
    /// one-shot that has fired stays held until it is cancelled or started again.
    bool Start(CTimerQueue& queue, WAITORTIMERCALLBACK callback, void* parameter, DWORD dueMs,
               DWORD periodMs, ULONG flags);
    /// Cancels without waiting; of two threads cancelling one timer only one makes the system
    /// call. False when nothing was held or the system refused.
    bool Cancel();
    /// Whether a timer is held (it may have fired already).
    bool IsSet() const { return m_handle != nullptr; }

private:
    CTimerQueue* m_queue = nullptr;
    HANDLE m_handle = nullptr;
};

}  // namespace ovklib
