#include "support/timer_queue.h"

#include <mutex>
#include <utility>

namespace ovklib {

CTimerQueue::CTimerQueue() : m_lock(/*spinCount=*/4000) {}

CTimerQueue::~CTimerQueue() { Destroy(); }

bool CTimerQueue::IsValid() const { return m_queue != nullptr && m_queue != INVALID_HANDLE_VALUE; }

void CTimerQueue::Create() {
    if (!IsValid()) m_queue = CreateTimerQueue();
}

BOOL CTimerQueue::Destroy() {
    if (!IsValid()) return FALSE;
    HANDLE queue = std::exchange(m_queue, nullptr);
    return DeleteTimerQueueEx(queue, /*CompletionEvent=*/nullptr);
}

BOOL CTimerQueue::CreateTimer(HANDLE& timer, WAITORTIMERCALLBACK callback, void* parameter,
                              DWORD dueMs, DWORD periodMs, ULONG flags) {
    if (!IsValid()) Create();
    timer = nullptr;
    if (!IsValid()) return FALSE;
    HANDLE created = INVALID_HANDLE_VALUE;
    BOOL result =
        CreateTimerQueueTimer(&created, m_queue, callback, parameter, dueMs, periodMs, flags);
    if (result) timer = created;
    return result;
}

BOOL CTimerQueue::DeleteTimer(HANDLE& timer) {
    std::lock_guard<CCriticalSection> guard(m_lock);
    if (!IsValid() || timer == nullptr || timer == INVALID_HANDLE_VALUE) return FALSE;
    HANDLE cancelled = std::exchange(timer, nullptr);
    return DeleteTimerQueueTimer(m_queue, cancelled, /*CompletionEvent=*/nullptr);
}

}  // namespace ovklib
