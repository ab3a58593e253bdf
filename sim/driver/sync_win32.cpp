// The synchronous commands: the driver's state for one application, read and written.
#include "sim/driver/driver_messages_win32.h"
#include "sim/driver/driver_state_win32.h"
#include "sim/driver/exports_win32.h"

#include <array>

using namespace qvx::simdriver;

namespace {

/// The driver's functions that a button can be given, numbered from 1.
constexpr std::array<const char*, 5> kFunctions = {"Fit", "Top", "Front", "Right", "Menu"};

/// The sync command that asks for a full sync.
constexpr WPARAM kFullSync = 2;

/// The driver's identifier of a connection's sync exchange: 16 bits.
WPARAM SyncIdentifier(OxHandle handle) { return (0x2A00 + handle) & 0xFFFF; }

/// Reads one int into a nullable output.
template <typename T>
std::int32_t Put(T* out, T value) {
    if (!out) return kOxBadValue;
    *out = value;
    return kOxNoError;
}

std::int32_t GetScale(const char* name, OxHandle handle, int which, float* value) {
    return OnConnection(
        name, Args()("handle", handle), handle,
        [&](DriverState& state, Connection&) { return Put(value, state.scales[which]); });
}

std::int32_t SetScale(const char* name, OxHandle handle, int which, float value) {
    return OnConnection(name, Args()("handle", handle)("value", value), handle,
                        [&](DriverState& state, Connection&) {
                            state.scales[which] = value;
                            return kOxNoError;
                        });
}

}  // namespace

extern "C" {

// The answer, a full sync under the connection's own sync identifier, goes to the connection's
// window after the lock is let go: whoever takes it calls back into the library.
std::int32_t OxSyncSendQuery(OxHandle handle) {
    HWND window = nullptr;
    SyncAnswer answer = SyncAnswer::Ignore;
    std::int32_t status = OnConnection("OxSyncSendQuery", Args()("handle", handle), handle,
                                       [&](DriverState& state, Connection& connection) {
                                           ++state.syncQueries;
                                           window = connection.window;
                                           answer = state.syncAnswer;
                                           return kOxNoError;
                                       });
    if (status != kOxNoError || !window) return status;
    WPARAM fullSync = SyncIdentifier(handle) << 16 | kFullSync;
    if (answer == SyncAnswer::Post) {
        PostMessageW(window, Messages().sync, fullSync, 0);
    } else if (answer == SyncAnswer::Send) {
        SendFromThread(window, Messages().sync, fullSync, 0);
    }
    return status;
}

std::int32_t OxSyncGetVersion(OxHandle handle, std::int32_t* major, std::int32_t* minor) {
    return OnConnection("OxSyncGetVersion", Args()("handle", handle), handle,
                        [&](DriverState& state, Connection&) {
                            if (!major || !minor) return kOxBadValue;
                            *major = state.driverVersion.major;
                            *minor = state.driverVersion.minor;
                            return kOxNoError;
                        });
}

std::int32_t OxSyncGetNumberOfFunctions(OxHandle handle, std::int32_t* count) {
    return OnConnection("OxSyncGetNumberOfFunctions", Args()("handle", handle), handle,
                        [&](DriverState&, Connection&) {
                            return Put(count, static_cast<std::int32_t>(kFunctions.size()));
                        });
}

// A label that does not fit gives 20 and the size it needs.
std::int32_t OxSyncGetFunction(OxHandle handle, std::int32_t index, std::int32_t* function,
                               char* label, std::uint32_t* labelSize) {
    return OnConnection("OxSyncGetFunction", Args()("handle", handle)("index", index), handle,
                        [&](DriverState&, Connection&) {
                            if (!function || !labelSize) return kOxBadValue;
                            if (index < 1 || index > static_cast<std::int32_t>(kFunctions.size())) {
                                return kOxBadValue;
                            }
                            std::string text = kFunctions[index - 1];
                            *function = index;
                            std::int32_t copied = CopyText(text, label, *labelSize);
                            if (copied == kOxNotEnoughMemory) *labelSize = text.size() + 1;
                            return copied;
                        });
}

std::int32_t OxSyncGetButtonAssignment(OxHandle handle, std::int32_t button,
                                       std::int32_t* function) {
    return OnConnection("OxSyncGetButtonAssignment", Args()("handle", handle)("button", button),
                        handle, [&](DriverState& state, Connection&) {
                            auto found = state.buttonAssignments.find(button);
                            return Put(function,
                                       found == state.buttonAssignments.end() ? 0 : found->second);
                        });
}

std::int32_t OxSyncSetButtonAssignment(OxHandle handle, std::int32_t button,
                                       std::int32_t function) {
    return OnConnection("OxSyncSetButtonAssignment",
                        Args()("handle", handle)("button", button)("function", function), handle,
                        [&](DriverState& state, Connection&) {
                            state.buttonAssignments[button] = function;
                            return kOxNoError;
                        });
}

std::int32_t OxSyncSetButtonAssignmentAbsolute(OxHandle handle, std::int32_t button,
                                               std::int32_t function) {
    return OnConnection("OxSyncSetButtonAssignmentAbsolute",
                        Args()("handle", handle)("button", button)("function", function), handle,
                        [&](DriverState& state, Connection&) {
                            state.buttonAssignments[button] = function;
                            return kOxNoError;
                        });
}

std::int32_t OxSyncSetButtonName(OxHandle handle, std::int32_t button, const char* name) {
    return OnConnection("OxSyncSetButtonName",
                        Args()("handle", handle)("button", button)("name", name), handle,
                        [&](DriverState& state, Connection&) {
                            if (!name) return kOxBadValue;
                            state.buttonNames[button] = name;
                            return kOxNoError;
                        });
}

std::int32_t OxSyncGetAxisLabel(OxHandle handle, std::int32_t axis, char* label,
                                std::uint32_t size) {
    return OnConnection("OxSyncGetAxisLabel", Args()("handle", handle)("axis", axis), handle,
                        [&](DriverState& state, Connection&) {
                            auto found = state.axisLabels.find(axis);
                            std::string text = found != state.axisLabels.end()
                                                   ? found->second
                                                   : "Axis " + std::to_string(axis);
                            return CopyText(text, label, size);
                        });
}

std::int32_t OxSyncSetAxisLabel(OxHandle handle, std::int32_t axis, const char* label) {
    return OnConnection("OxSyncSetAxisLabel",
                        Args()("handle", handle)("axis", axis)("label", label), handle,
                        [&](DriverState& state, Connection&) {
                            if (!label) return kOxBadValue;
                            state.axisLabels[axis] = label;
                            return kOxNoError;
                        });
}

std::int32_t OxSyncGetFilter(OxHandle handle, std::int32_t filter, std::int32_t* value) {
    return OnConnection("OxSyncGetFilter", Args()("handle", handle)("filter", filter), handle,
                        [&](DriverState& state, Connection&) {
                            auto found = state.filters.find(filter);
                            return Put(value, found == state.filters.end() ? 0 : found->second);
                        });
}

std::int32_t OxSyncSetFilter(OxHandle handle, std::int32_t filter, std::int32_t value) {
    return OnConnection("OxSyncSetFilter",
                        Args()("handle", handle)("filter", filter)("state", value), handle,
                        [&](DriverState& state, Connection&) {
                            state.filters[filter] = value;
                            return kOxNoError;
                        });
}

std::int32_t OxSyncGetOrientation(OxHandle handle, std::int32_t* orientation) {
    return OnConnection(
        "OxSyncGetOrientation", Args()("handle", handle), handle,
        [&](DriverState& state, Connection&) { return Put(orientation, state.orientation); });
}

std::int32_t OxSyncSetOrientation(OxHandle handle, std::int32_t orientation) {
    return OnConnection("OxSyncSetOrientation",
                        Args()("handle", handle)("orientation", orientation), handle,
                        [&](DriverState& state, Connection&) {
                            state.orientation = orientation;
                            return kOxNoError;
                        });
}

std::int32_t OxSyncGetAxesState(OxHandle handle, std::int32_t* value) {
    return OnConnection(
        "OxSyncGetAxesState", Args()("handle", handle), handle,
        [&](DriverState& state, Connection&) { return Put(value, state.axesState); });
}

std::int32_t OxSyncSetAxesState(OxHandle handle, std::int32_t value) {
    return OnConnection("OxSyncSetAxesState", Args()("handle", handle)("state", value), handle,
                        [&](DriverState& state, Connection&) {
                            state.axesState = value;
                            return kOxNoError;
                        });
}

std::int32_t OxSyncSetInfoLine(OxHandle handle, std::int32_t duration, const char* text) {
    return OnConnection("OxSyncSetInfoLine",
                        Args()("handle", handle)("duration", duration)("text", text), handle,
                        [&](DriverState& state, Connection&) {
                            state.infoLine = text ? text : "";
                            return kOxNoError;
                        });
}

std::int32_t OxSyncGetScaleOverall(OxHandle handle, float* value) {
    return GetScale("OxSyncGetScaleOverall", handle, 0, value);
}
std::int32_t OxSyncSetScaleOverall(OxHandle handle, float value) {
    return SetScale("OxSyncSetScaleOverall", handle, 0, value);
}
std::int32_t OxSyncGetScaleTx(OxHandle handle, float* value) {
    return GetScale("OxSyncGetScaleTx", handle, 1, value);
}
std::int32_t OxSyncSetScaleTx(OxHandle handle, float value) {
    return SetScale("OxSyncSetScaleTx", handle, 1, value);
}
std::int32_t OxSyncGetScaleTy(OxHandle handle, float* value) {
    return GetScale("OxSyncGetScaleTy", handle, 2, value);
}
std::int32_t OxSyncSetScaleTy(OxHandle handle, float value) {
    return SetScale("OxSyncSetScaleTy", handle, 2, value);
}
std::int32_t OxSyncGetScaleTz(OxHandle handle, float* value) {
    return GetScale("OxSyncGetScaleTz", handle, 3, value);
}
std::int32_t OxSyncSetScaleTz(OxHandle handle, float value) {
    return SetScale("OxSyncSetScaleTz", handle, 3, value);
}
std::int32_t OxSyncGetScaleRx(OxHandle handle, float* value) {
    return GetScale("OxSyncGetScaleRx", handle, 4, value);
}
std::int32_t OxSyncSetScaleRx(OxHandle handle, float value) {
    return SetScale("OxSyncSetScaleRx", handle, 4, value);
}
std::int32_t OxSyncGetScaleRy(OxHandle handle, float* value) {
    return GetScale("OxSyncGetScaleRy", handle, 5, value);
}
std::int32_t OxSyncSetScaleRy(OxHandle handle, float value) {
    return SetScale("OxSyncSetScaleRy", handle, 5, value);
}
std::int32_t OxSyncGetScaleRz(OxHandle handle, float* value) {
    return GetScale("OxSyncGetScaleRz", handle, 6, value);
}
std::int32_t OxSyncSetScaleRz(OxHandle handle, float value) {
    return SetScale("OxSyncSetScaleRz", handle, 6, value);
}

std::int32_t OxSyncInvokeAbsoluteFunction(OxHandle handle, std::int32_t function) {
    return OnConnection("OxSyncInvokeAbsoluteFunction",
                        Args()("handle", handle)("function", function), handle,
                        [](DriverState&, Connection&) { return kOxNoError; });
}

std::int32_t OxSyncSetButtonState(OxHandle handle, std::int32_t button, std::int32_t value) {
    return OnConnection("OxSyncSetButtonState",
                        Args()("handle", handle)("button", button)("state", value), handle,
                        [](DriverState&, Connection&) { return kOxNoError; });
}

std::int32_t OxSyncSuspendFileWriting(OxHandle handle) {
    return OnConnection("OxSyncSuspendFileWriting", Args()("handle", handle), handle,
                        [](DriverState&, Connection&) { return kOxNoError; });
}

std::int32_t OxSyncResumeFileWriting(OxHandle handle) {
    return OnConnection("OxSyncResumeFileWriting", Args()("handle", handle), handle,
                        [](DriverState&, Connection&) { return kOxNoError; });
}

// Keys are the device's buttons unchanged.
std::int32_t OxGetButtonV3DK(OxHandle handle, std::int32_t button, std::int32_t* key) {
    return OnConnection("OxGetButtonV3DK", Args()("handle", handle)("button", button), handle,
                        [&](DriverState&, Connection&) { return Put(key, button); });
}

std::int32_t OxGetButtonNameV3DK(OxHandle handle, std::int32_t key, OxButtonName* name) {
    return OnConnection("OxGetButtonNameV3DK", Args()("handle", handle)("key", key), handle,
                        [&](DriverState&, Connection&) {
                            if (!name) return kOxBadValue;
                            *name = OxButtonName{};
                            std::string text = "Key " + std::to_string(key);
                            return CopyText(text, name->name, sizeof name->name);
                        });
}

std::int32_t OxSyncInvokeActionID(OxHandle handle, const char* actionId) {
    return OnConnection("OxSyncInvokeActionID", Args()("handle", handle)("id", actionId), handle,
                        [&](DriverState&, Connection&) {
                            return actionId && *actionId ? kOxNoError : kOxBadValue;
                        });
}

std::int32_t OxSyncSetGrabSyncID(OxHandle handle, std::uint32_t id) {
    return OnConnection("OxSyncSetGrabSyncID", Args()("handle", handle)("id", id), handle,
                        [&](DriverState&, Connection& connection) {
                            connection.grabSyncId = id;
                            return kOxNoError;
                        });
}

std::int32_t OxSyncSetSyncID(OxHandle handle, std::uint32_t id) {
    return OnConnection("OxSyncSetSyncID", Args()("handle", handle)("id", id), handle,
                        [&](DriverState&, Connection& connection) {
                            connection.syncId = id;
                            return kOxNoError;
                        });
}

}  // extern "C"
