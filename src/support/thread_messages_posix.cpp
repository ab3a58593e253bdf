#include "support/thread_messages.h"

#include <utility>

namespace qvx::os {
namespace {
std::vector<std::uint32_t> g_posted;
}

bool PostCommandToThisThread(std::uint32_t commandId) {
    g_posted.push_back(commandId);
    return true;
}

std::vector<std::uint32_t> TakePostedCommandsForTest() { return std::exchange(g_posted, {}); }

}  // namespace qvx::os
