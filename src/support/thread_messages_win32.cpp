#include "support/thread_messages.h"
#include "support/windows_api.h"

namespace qvx::os {

bool PostCommandToThisThread(std::uint32_t commandId) {
    return PostThreadMessageW(GetCurrentThreadId(), WM_COMMAND, commandId, 0) != FALSE;
}

}  // namespace qvx::os
