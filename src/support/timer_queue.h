// A thin owner of a system timer queue: one-shot and repeating callbacks on the system's
// timer threads. Windows only. The queue is made on first use; scheduling is the system's.
//
// Cancellation returns without waiting: a callback that has already begun runs to its end
// after DeleteTimer or Destroy return, so its parameter must stay alive for that time.
#pragma once

#include "support/win32_handles.h"
#include "support/windows_api.h"

namespace ovklib {

class CTimerQueue {
public:
    CTimerQueue();
    CTimerQueue(const CTimerQueue&) = delete;
    CTimerQueue& operator=(const CTimerQueue&) = delete;
    /// Destroys the queue, then the lock.
    virtual ~CTimerQueue();

    /// The queue handle is neither null nor INVALID_HANDLE_VALUE.
    bool IsValid() const;
    /// Makes the queue unless it exists; a failure leaves it invalid and is not reported.
    void Create();
    /// Deletes the queue without waiting for running callbacks. The system call's result; 0
    /// when there was no queue.
    BOOL Destroy();

    /// Starts a timer, making the queue first if need be. `timer` is set to 0 first and to
    /// the new timer on success. A period of 0 makes a one-shot; `flags` are the system's.
    /// Not guarded by the lock. Non-zero on success.
    BOOL CreateTimer(HANDLE& timer, WAITORTIMERCALLBACK callback, void* parameter, DWORD dueMs,
                     DWORD periodMs, ULONG flags);
    /// Cancels `timer` without waiting and sets it to 0, under the lock, before the system
    /// call: of two callers cancelling one handle only one gets a non-zero result. 0 for a
    /// handle of 0 or -1 or when there is no queue; then no system call is made.
    BOOL DeleteTimer(HANDLE& timer);

private:
    CCriticalSection m_lock;
    HANDLE m_queue = nullptr;
};

}  // namespace ovklib
