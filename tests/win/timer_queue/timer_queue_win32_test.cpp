// The timer queue over the system's: lazy creation, guarded cancellation, re-creation; and the
// owner of one of its timers.
#include "support/queue_timer.h"
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

TEST(TimerQueueTest, RepeatingTimerFiresAgainAndCancellingForgetsItsHandle) {
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

/// The owner's cancellation is seen through order: a timer that is due first but was cancelled
/// must not have fired by the time a later one has.
TEST(QueueTimerTest, StartingAgainOrGoingCancelsTheTimerHeld) {
    static Ticks replaced;
    static Ticks dropped;
    static Ticks later;
    CTimerQueue queue;
    CQueueTimer slot;
    ASSERT_TRUE(slot.Start(queue, &CountTick, &replaced, /*dueMs=*/20, 0, WT_EXECUTEONLYONCE));
    {
        CQueueTimer scoped;
        ASSERT_TRUE(scoped.Start(queue, &CountTick, &dropped, 20, 0, WT_EXECUTEONLYONCE));
    }
    ASSERT_TRUE(slot.Start(queue, &CountTick, &later, 60, 0, WT_EXECUTEONLYONCE));
    ASSERT_EQ(WaitForSingleObject(later.reached.Get(), 5000), WAIT_OBJECT_0);
    EXPECT_EQ(replaced.count, 0);
    EXPECT_EQ(dropped.count, 0);
    EXPECT_TRUE(slot.IsSet()) << "a fired one-shot stays held until cancelled";
    EXPECT_TRUE(slot.Cancel());
    EXPECT_FALSE(slot.IsSet());
    EXPECT_FALSE(slot.Cancel()) << "nothing left to cancel";
}

TEST(QueueTimerTest, MovingHandsTheTimerOverAndTheQueuesEndForgetsIt) {
    static Ticks ticks;
    CTimerQueue queue;
    CQueueTimer first;
    ASSERT_TRUE(first.Start(queue, &CountTick, &ticks, kNever, 0, WT_EXECUTEONLYONCE));
    CQueueTimer second(std::move(first));
    EXPECT_FALSE(first.IsSet());
    EXPECT_TRUE(second.IsSet());
    CQueueTimer third;
    third = std::move(second);
    EXPECT_FALSE(second.IsSet());
    ASSERT_TRUE(third.IsSet());

    queue.Destroy();
    EXPECT_FALSE(third.Cancel()) << "the queue took its timers with it";
    EXPECT_FALSE(third.IsSet());
}

}  // namespace
}  // namespace ovklib
