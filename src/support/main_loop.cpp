#include "support/main_loop.h"

#include <utility>

namespace qvx {
namespace {
// Read and written on the main thread only, like everything that uses it.
IMainLoop* g_installed = nullptr;
}  // namespace

IMainLoop& MainLoop() { return g_installed ? *g_installed : SystemMainLoop(); }

void SetMainLoop(IMainLoop* loop) { g_installed = loop; }

CThreadTimer::CThreadTimer(CThreadTimer&& other) noexcept
    : m_loop(std::exchange(other.m_loop, nullptr)), m_id(std::exchange(other.m_id, 0)) {}

CThreadTimer& CThreadTimer::operator=(CThreadTimer&& other) noexcept {
    if (this != &other) {
        Stop();
        m_loop = std::exchange(other.m_loop, nullptr);
        m_id = std::exchange(other.m_id, 0);
    }
    return *this;
}

bool CThreadTimer::Start(std::uint32_t periodMs, void (*callback)()) {
    IMainLoop& loop = MainLoop();
    // An id of another loop means nothing to this one.
    if (m_loop != &loop) Stop();
    const std::uint32_t id = loop.StartThreadTimer(m_id, periodMs, callback);
    if (id == 0) {
        Stop();
        return false;
    }
    if (m_id != 0 && m_id != id) m_loop->StopThreadTimer(m_id);
    m_loop = &loop;
    m_id = id;
    return true;
}

void CThreadTimer::Stop() {
    if (m_id != 0 && m_loop) m_loop->StopThreadTimer(m_id);
    m_id = 0;
    m_loop = nullptr;
}

}  // namespace qvx
