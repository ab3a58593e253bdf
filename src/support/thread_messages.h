// Posting a Windows command to the calling thread's own message queue, as a menu would.
// The native build records the posts instead, for tests.
#pragma once

#include <cstdint>
#include <vector>

namespace qvx::os {

/// Posts WM_COMMAND with wParam `commandId` and lParam 0 to this thread; true when posted.
bool PostCommandToThisThread(std::uint32_t commandId);

#ifndef _WIN32
/// The command ids posted so far on the native build; the list is emptied.
std::vector<std::uint32_t> TakePostedCommandsForTest();
#endif

}  // namespace qvx::os
