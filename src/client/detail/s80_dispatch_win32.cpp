// CS80ClientImpl: the dispatcher of driver events, and the motion, key and command paths.
#include "client/detail/s80_client_win32.h"

#include "client/detail/oxapp_shim.h"
#include "client/detail/registered_messages_win32.h"
#include "support/boundary.h"

#include <cstring>
#include <mutex>

namespace oxapp::detail {

namespace {

constexpr std::size_t kCommandLength = sizeof(OxKvwCommand::command);
constexpr std::int32_t kCallbackTaken = 0;
constexpr std::int32_t kCallbackNotTaken = -1;

}  // namespace

std::int32_t CS80ClientImpl::CallbackEntry(const OxKvwEvent* event, void* context) {
    return qvx::CallAtBoundary("CS80ClientImpl::CallbackEntry", kCallbackNotTaken, [&] {
        if (!context || !event) return kCallbackNotTaken;
        auto* self = static_cast<CS80ClientImpl*>(context);
        // Holds the object alive while the event runs, even if its last owner lets go.
        auto alive = self->m_weakSelf.lock();
        if (!alive) return kCallbackNotTaken;
        CKvwEvent copy(*event);
        return self->DispatchEvent(copy) != 0 ? kCallbackTaken : kCallbackNotTaken;
    });
}

std::int32_t CS80ClientImpl::DispatchEvent(const CKvwEvent& event) {
    // A slot's failure stays here: the driver gets "not taken".
    return qvx::CallAtBoundary("CS80ClientImpl::DispatchEvent", std::int32_t{0}, [&] {
        switch (event.NormalisedType()) {
            case kOxEventKeyQuery:
                return Has(kFlagKeys) ? 1 : 0;
            case kOxEventMotion:
                if (!Has(kFlagMotion)) return 0;
                m_motionTimer.Cancel();
                DeliverMotion(event);
                return 1;
            case kOxEventZeroMotion:
                return Has(kFlagMotion) ? ZeroMotion() : 0;
            case kOxEventCommand:
                return Has(kFlagCommands) ? Command(event) : 0;
            case kOxEventSync:
                return HandleSync(event);
            case kOxEventKeyDown:
            case kOxEventKeyUp:
                if (!Has(kFlagKeys)) return 0;
                ClientEvents().OnKey(m_handle, event.key.key,
                                     event.NormalisedType() == kOxEventKeyDown);
                return 1;
            case kOxEventMatrixCommand:
                return Has(kFlagKeys | kFlagCommands) ? MatrixCommand(event) : 0;
            case kOxEventValueChanged:
                if (!Has(kFlagCommands)) return 0;
                CfgEvents().OnValueChanged(m_handle);
                return 1;
            case kOxEventConnectionChanged:
                return ConnectionChanged();
            default:
                return 0;
        }
    });
}

void CS80ClientImpl::DeliverMotion(const OxKvwEvent& event) {
    {
        std::lock_guard<ovklib::CCriticalSection> guard(m_eventLock);
        m_current.type = event.type;
        std::memcpy(m_current.raw, event.raw, sizeof(event.raw));
    }
    // The driver's axes into the application's: the second and third swap, with the sign
    // inverted.
    const OxKvwMotion& m = event.motion;
    const float values[6] = {static_cast<float>(m.tx),  static_cast<float>(-m.tz),
                             static_cast<float>(-m.ty), static_cast<float>(m.rx),
                             static_cast<float>(-m.rz), static_cast<float>(-m.ry)};
    ClientEvents().OnMotion(m_handle, values);
}

std::int32_t CS80ClientImpl::ZeroMotion() {
    m_motionTimer.Cancel();
    bool atRest = false;
    {
        std::lock_guard<ovklib::CCriticalSection> guard(m_eventLock);
        atRest = m_current.NormalisedType() == kOxEventZeroMotion;
    }
    if (atRest) return 1;
    // The end of motion is reported a moment later unless motion comes back first.
    m_motionTimer.Start(m_timers, &CS80ClientImpl::OnMotionTimer, m_timerWindow.load(),
                        TimerPeriodsInForce().motionEnd, /*periodMs=*/0, WT_EXECUTEONLYONCE);
    return 0;
}

void CALLBACK CS80ClientImpl::OnMotionTimer(void* window, BOOLEAN) {
    qvx::CallAtBoundary("CS80ClientImpl::OnMotionTimer", [&] {
        RunTimerProbe();
        // The fired timer stays held until the slot is started again or cancelled. A window
        // that is gone makes the post fail, and nothing else is touched.
        if (window) PostMessageW(static_cast<HWND>(window), ClientMessages().motionEnd, 0, 0);
    });
}

std::int32_t CS80ClientImpl::Command(const OxKvwEvent& event) {
    const char* text = event.command.command;
    std::size_t length = strnlen(text, kCommandLength);
    // Empty, or no terminator inside the field: nothing to run.
    if (length == 0 || length == kCommandLength) return 0;
    // The slots see the record's own text, which lives until the dispatcher returns.
    CmdEvents().OnCommand(m_handle, text, event.command.pressed != 0);
    return 1;
}

std::int32_t CS80ClientImpl::MatrixCommand(const OxKvwEvent& event) {
    std::uint32_t blockA[16];
    std::uint32_t blockB[16];
    std::memcpy(blockA, event.matrixCommand.blockA, sizeof(blockA));
    std::memcpy(blockB, event.matrixCommand.blockB, sizeof(blockB));
    CmdEvents().OnCommandEx(m_handle, event.matrixCommand.id, event.matrixCommand.pressed != 0,
                            blockA, blockB);
    return 1;
}

std::int32_t CS80ClientImpl::ConnectionChanged() {
    SetGrabSyncId();
    return Has(kFlagCommands) ? 1 : 0;
}

void CS80ClientImpl::SetGrabSyncId() {
    // The driver grabs for the connection that takes commands by the callback.
    if (Has(kFlagCommands) && Has(kFlagCallback)) {
        OxSyncSetGrabSyncID(m_handle, OxGetConnectionID(m_handle));
    }
}

// An injected key only asks the dispatcher's type 1 question, whether key events pass; it is
// not delivered.
bool CS80ClientImpl::InjectKeyDown(std::uint32_t) { return Has(kFlagKeys); }

bool CS80ClientImpl::InjectKeyUp(std::uint32_t) { return Has(kFlagKeys); }

}  // namespace oxapp::detail
