// The window messages that the driver and the client register by name. They are registered
// while the module initialises, before any object exists; the client window and the proxy
// window keep copies of their own.
#pragma once

#include "support/windows_api.h"

namespace oxapp::detail {

struct CRegisteredMessages {
    /// "KelvaroMessage00": a driver event is waiting.
    UINT event = 0;
    /// "CommandEvent": wParam 27704 asks for a reconnect.
    UINT command = 0;
    /// "SyncCommandEvent": high word the sync identifier, low word the sync command.
    UINT sync = 0;
    /// "MotionEndEvent": posted by the client to itself.
    UINT motionEnd = 0;
};

const CRegisteredMessages& ClientMessages();
const CRegisteredMessages& ProxyMessages();

/// Posted to a thread to end its message loop.
inline constexpr UINT kEndThreadMessage = WM_USER + 1;
/// Sent by the sync timer to the client window when the driver has not answered the sync
/// query in time; private to the client window's class.
inline constexpr UINT kSyncQueryUnansweredMessage = WM_APP + 1;
/// The wParam of "CommandEvent" that asks for a reconnect.
inline constexpr WPARAM kReconnectCommand = 27704;

}  // namespace oxapp::detail
