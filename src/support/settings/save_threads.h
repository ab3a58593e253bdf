// Saves that run on threads of their own, so that the caller returns at once, but stay owned:
// finished threads are joined at the next start, and the owner's end waits for the rest. A
// plug-in may be unloaded right after a save, and a thread still running its code then would
// run into freed memory. The saves run one at a time, and one that a newer save has overtaken
// is skipped, so that what stays on disk is the newest.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <thread>

namespace s3dm {

class CSaveThreads {
public:
    CSaveThreads() = default;
    CSaveThreads(const CSaveThreads&) = delete;
    CSaveThreads& operator=(const CSaveThreads&) = delete;
    ~CSaveThreads() { JoinAll(); }

    /// Runs `job` on a new thread; an exception ends the job and goes no further. When no
    /// thread can be made, the job runs on the caller's thread instead. The job does not run
    /// at all when a job started after it has run first.
    void Start(std::function<void()> job);
    /// Waits for every job started so far.
    void JoinAll();
    /// Jobs started and not yet joined.
    std::size_t Pending();

private:
    struct CJob {
        std::thread thread;
        std::shared_ptr<std::atomic<bool>> done;
    };
    /// What the jobs share: one runs at a time, and the newest that ran is known.
    struct COrder {
        std::mutex running;
        std::uint64_t newestRun = 0;
    };
    void JoinFinished();

    std::mutex m_lock;
    std::list<CJob> m_jobs;
    std::shared_ptr<COrder> m_order = std::make_shared<COrder>();
    std::uint64_t m_started = 0;
};

}  // namespace s3dm
