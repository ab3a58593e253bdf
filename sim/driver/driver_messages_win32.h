// The registered messages by which the driver reaches an application's window, and the
// driver's own threads that send them as a driver in another process would.
#pragma once

#include "support/windows_api.h"

namespace qvx::simdriver {

struct DriverMessages {
    UINT event;    ///< "KelvaroMessage00": an event is waiting for OxGetEvent
    UINT command;  ///< "CommandEvent": wParam is the command, 27704 a restarted driver
    UINT sync;     ///< "SyncCommandEvent": wParam is sync identifier << 16 | sync command
};

/// Registered once, on first use.
const DriverMessages& Messages();

/// Sends `message` to `window` from a new thread and returns at once. The thread keeps the
/// library loaded until SendMessageW has returned, so the library may be freed meanwhile.
/// False if the thread could not be started.
bool SendFromThread(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Waits up to `timeoutMs` for the sending threads to end, handling messages sent to the
/// calling thread meanwhile, so that a sender waiting for this very thread can finish.
/// Threads still sending after that are left running; they hold the library themselves.
void JoinSenders(DWORD timeoutMs);

}  // namespace qvx::simdriver
