#include "support/queue_timer.h"

#include <utility>

namespace ovklib {

CQueueTimer::CQueueTimer(CQueueTimer&& other) noexcept
    : m_queue(other.m_queue), m_handle(std::exchange(other.m_handle, nullptr)) {}

CQueueTimer& CQueueTimer::operator=(CQueueTimer&& other) noexcept {
    if (this != &other) {
        Cancel();
        m_queue = other.m_queue;
        m_handle = std::exchange(other.m_handle, nullptr);
    }
    return *this;
}

bool CQueueTimer::Start(CTimerQueue& queue, WAITORTIMERCALLBACK callback, void* parameter,
                        DWORD dueMs, DWORD periodMs, ULONG flags) {
    Cancel();
    m_queue = &queue;
    return queue.CreateTimer(m_handle, callback, parameter, dueMs, periodMs, flags) != FALSE;
}

bool CQueueTimer::Cancel() {
    if (!m_queue) return false;
    // A queue that was destroyed took its timers with it.
    if (!m_queue->IsValid()) {
        m_handle = nullptr;
        return false;
    }
    // With no completion event the system may answer "pending" although the timer is gone;
    // the handle is forgotten either way, under the queue's lock.
    SetLastError(ERROR_SUCCESS);
    return m_queue->DeleteTimer(m_handle) != FALSE || GetLastError() == ERROR_IO_PENDING;
}

}  // namespace ovklib
