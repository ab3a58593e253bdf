#include "support/settings/save_threads.h"

#include "support/boundary.h"

#include <system_error>

namespace s3dm {

void CSaveThreads::Start(std::function<void()> job) {
    JoinFinished();
    auto done = std::make_shared<std::atomic<bool>>(false);
    auto body = [job = std::move(job), done, order = m_order, ticket = ++m_started] {
        {
            std::lock_guard<std::mutex> running(order->running);
            if (ticket > order->newestRun) {
                order->newestRun = ticket;
                qvx::CallAtBoundary("C3dmouseSettings::Save", job);
            }
        }
        done->store(true);
    };
    try {
        std::thread thread(body);
        std::lock_guard<std::mutex> guard(m_lock);
        m_jobs.push_back({std::move(thread), done});
    } catch (const std::system_error&) {
        body();
    }
}

void CSaveThreads::JoinFinished() {
    std::list<CJob> finished;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        for (auto it = m_jobs.begin(); it != m_jobs.end();) {
            auto next = std::next(it);
            if (it->done->load()) finished.splice(finished.end(), m_jobs, it);
            it = next;
        }
    }
    for (CJob& job : finished) job.thread.join();
}

void CSaveThreads::JoinAll() {
    std::list<CJob> all;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        all.swap(m_jobs);
    }
    for (CJob& job : all) job.thread.join();
}

std::size_t CSaveThreads::Pending() {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_jobs.size();
}

}  // namespace s3dm
