#include "client/detail/registered_messages_win32.h"

namespace oxapp::detail {
namespace {

CRegisteredMessages Register() {
    CRegisteredMessages messages;
    messages.event = RegisterWindowMessageW(L"KelvaroMessage00");
    messages.command = RegisterWindowMessageW(L"CommandEvent");
    messages.sync = RegisterWindowMessageW(L"SyncCommandEvent");
    messages.motionEnd = RegisterWindowMessageW(L"MotionEndEvent");
    return messages;
}

// Made by the module's static initialisation, so they exist before any window.
const CRegisteredMessages g_clientMessages = Register();
const CRegisteredMessages g_proxyMessages = Register();

}  // namespace

const CRegisteredMessages& ClientMessages() { return g_clientMessages; }
const CRegisteredMessages& ProxyMessages() { return g_proxyMessages; }

}  // namespace oxapp::detail
