// The timer queue over the system's: lazy creation, guarded cancellation, re-creation.
#include "support/timer_queue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace ovklib {
namespace {

/// What a callback touches; outlives every timer of the test that uses it.
struct Ticks {
    std::atomic<int> count{0};
    int wanted = 1;
    CKernelHandle reached{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

void CALLBACK CountTick(void* parameter, BOOLEAN /*timedOut*/) {
    auto* ticks = static_cast<Ticks*>(parameter);
    if (++ticks->count == ticks->wanted) SetEvent(ticks->reached.Get());
}

/// Long enough never to fire while a test runs.
constexpr DWORD kNever = 600'000;

/// Whether DeleteTimer made the system call. With no completion event the system may answer
/// "pending" although no callback runs (Wine always does); the timer is cancelled all the
/// same. A call that the guard stopped leaves the thread's last error alone.
bool Cancels(CTimerQueue& queue, HANDLE& timer) {
    SetLastError(ERROR_SUCCESS);
    return queue.DeleteTimer(timer) || GetLastError() == ERROR_IO_PENDING;
}

TEST(TimerQueueTest, DeleteTimerOfANullHandleOrBeforeAnyTimerReturnsZeroAndMakesNoQueue) {
    CTimerQueue queue;
    HANDLE none = nullptr;
    HANDLE invalid = INVALID_HANDLE_VALUE;
    EXPECT_FALSE(Cancels(queue, none));
    EXPECT_FALSE(Cancels(queue, invalid));
    EXPECT_FALSE(queue.IsValid());
    EXPECT_FALSE(queue.Destroy()) << "there was no queue to destroy";
}

TEST(TimerQueueTest, OneShotFiresOnceAndTheQueueIsMadeOnFirstUse) {
    static Ticks ticks;
    CTimerQueue queue;
    HANDLE timer = INVALID_HANDLE_VALUE;
    ASSERT_TRUE(queue.CreateTimer(timer, &CountTick, &ticks, /*dueMs=*/5, /*periodMs=*/0,
                                  WT_EXECUTEDEFAULT));
    EXPECT_TRUE(queue.IsValid());
    EXPECT_NE(timer, nullptr);
    EXPECT_NE(timer, INVALID_HANDLE_VALUE);
    ASSERT_EQ(WaitForSingleObject(ticks.reached.Get(), 5000), WAIT_OBJECT_0);
    EXPECT_EQ(ticks.count, 1);
}

TEST(TimerQueueTest, RepeatingTimerFiresUntilCancelled) {
    static Ticks ticks;
    ticks.wanted = 3;
    CTimerQueue queue;
    HANDLE timer = nullptr;
    ASSERT_TRUE(queue.CreateTimer(timer, &CountTick, &ticks, /*dueMs=*/1, /*periodMs=*/2,
                                  WT_EXECUTEDEFAULT));
    ASSERT_EQ(WaitForSingleObject(ticks.reached.Get(), 5000), WAIT_OBJECT_0);
    // A tick may be running now, so the system may answer "pending"; the handle is ours to
    // forget either way.
    queue.DeleteTimer(timer);
    EXPECT_EQ(timer, nullptr);
}

TEST(TimerQueueTest, SecondDeleteOfOneHandleReturnsZero) {
    static Ticks ticks;
    CTimerQueue queue;
    HANDLE timer = nullptr;
    ASSERT_TRUE(queue.CreateTimer(timer, &CountTick, &ticks, kNever, 0, WT_EXECUTEDEFAULT));
    EXPECT_TRUE(Cancels(queue, timer));
    EXPECT_EQ(timer, nullptr);
    EXPECT_FALSE(Cancels(queue, timer));
}

TEST(TimerQueueTest, OfTwoThreadsCancellingOneHandleExactlyOneSucceeds) {
    static Ticks ticks;
    CTimerQueue queue;
    for (int round = 0; round < 20; ++round) {
        HANDLE timer = nullptr;
        ASSERT_TRUE(queue.CreateTimer(timer, &CountTick, &ticks, kNever, 0, WT_EXECUTEDEFAULT));
        std::atomic<int> successes{0};
        // A manual-reset event lets both threads go at once.
        CKernelHandle start(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        auto cancel = [&] {
            WaitForSingleObject(start.Get(), INFINITE);
            if (Cancels(queue, timer)) ++successes;
        };
        std::thread a(cancel);
        std::thread b(cancel);
        SetEvent(start.Get());
        a.join();
        b.join();
        EXPECT_EQ(successes, 1) << "round " << round;
    }
}

TEST(TimerQueueTest, CreateTimerAfterDestroyMakesANewQueue) {
    static Ticks ticks;
    CTimerQueue queue;
    HANDLE timer = nullptr;
    ASSERT_TRUE(queue.CreateTimer(timer, &CountTick, &ticks, kNever, 0, WT_EXECUTEDEFAULT));
    queue.Destroy();
    EXPECT_FALSE(queue.IsValid());
    HANDLE stale = timer;
    EXPECT_FALSE(Cancels(queue, stale)) << "no queue: no system call";

    ASSERT_TRUE(queue.CreateTimer(timer, &CountTick, &ticks, 1, 0, WT_EXECUTEDEFAULT));
    EXPECT_TRUE(queue.IsValid());
    ASSERT_EQ(WaitForSingleObject(ticks.reached.Get(), 5000), WAIT_OBJECT_0);
}

}  // namespace
}  // namespace ovklib
