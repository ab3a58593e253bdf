// The main thread's loop on the native build, which has no message queue: the steady clock,
// waits that only sleep, and thread timers that take an id but never fire.
#include "support/main_loop.h"

#include "support/os.h"

#include <chrono>
#include <thread>

namespace qvx {
namespace {

class CPosixMainLoop final : public IMainLoop {
public:
    std::int64_t NowMs() override { return static_cast<std::int64_t>(os::MonotonicMs()); }
    bool PumpMessages(unsigned ms) override {
        std::this_thread::sleep_for(std::chrono::milliseconds(ms));
        return false;
    }
    unsigned BeginTimerPeriod() override { return 0; }
    void EndTimerPeriod(unsigned) override {}
    std::uint32_t StartThreadTimer(std::uint32_t id, std::uint32_t, void (*)()) override {
        return id != 0 ? id : m_nextId++;
    }
    void StopThreadTimer(std::uint32_t) override {}
    bool PostCommand(std::uint32_t) override { return false; }

private:
    std::uint32_t m_nextId = 1;
};

}  // namespace

IMainLoop& SystemMainLoop() {
    static CPosixMainLoop loop;
    return loop;
}

}  // namespace qvx
