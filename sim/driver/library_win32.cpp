// The library's core: initialise, connections, devices, versions and events.
#include "client/oxapp/ox_records.h"
#include "sim/driver/driver_messages_win32.h"
#include "sim/driver/driver_state_win32.h"
#include "sim/driver/exports_win32.h"

#include <algorithm>
#include <cstring>

using namespace qvx::simdriver;

namespace {

/// The 1-based number of the lowest set bit of a button word, 0 for none.
std::int32_t LowestButton(std::uint32_t word) {
    for (std::int32_t bit = 0; bit < 32; ++bit) {
        if (word & (1u << bit)) return bit + 1;
    }
    return 0;
}

/// A window that asked for a connection hears the driver's announcements from now on,
/// whether the open was granted or not: a restarted driver calls on every such window.
void RememberWindow(DriverState& state, HWND window) {
    if (window && IsWindow(window) &&
        std::find(state.windows.begin(), state.windows.end(), window) == state.windows.end()) {
        state.windows.push_back(window);
    }
}

OxHandle OpenConnection(DriverState& state, const char* appName, std::int32_t deviceId,
                        std::uint32_t mask, std::int32_t mode, const OxWinData* data) {
    if (!data || !appName) {
        KvwErrorVal = kOxBadValue;
        return 0;
    }
    if (data->window && !IsWindow(static_cast<HWND>(data->window))) {
        KvwErrorVal = kOxBadValue;
        return 0;
    }
    Connection connection;
    connection.appName = appName;
    connection.deviceId = deviceId;
    connection.mask = mask;
    connection.mode = mode;
    connection.window = static_cast<HWND>(data->window);
    RememberWindow(state, connection.window);
    connection.connectionId = state.nextConnectionId++;
    OxHandle handle = state.nextHandle++;
    state.connections.emplace(handle, std::move(connection));
    return handle;
}

/// Copies the oldest waiting record of a connection into `event`, and takes it out of the
/// queue when `take`: kOxIsEvent, or 0 when none waits.
std::int32_t FrontEvent(DriverState& state, OxHandle handle, OxKvwEvent* event, bool take) {
    if (!event) return kOxBadValue;
    Connection* connection = state.Find(handle);
    if (!connection) return kOxBadHandle;
    if (connection->events.empty()) return kOxNoError;
    *event = connection->events.front();
    if (take) connection->events.pop_front();
    state.NoteOnCall("event=" + std::to_string(event->type));
    return kOxIsEvent;
}

std::int32_t CopyFileName(DriverState& state, OxHandle handle, const std::string& text,
                          char* buffer, std::uint32_t size) {
    if (!state.Find(handle)) return kOxBadHandle;
    return CopyText(text, buffer, size);
}

}  // namespace

extern "C" {

std::int32_t OxBeep(OxHandle handle, const char* pattern) {
    return RunStatus(
        "OxBeep", Args()("handle", handle)("pattern", pattern), Needs::Driver,
        [&](DriverState& state) { return state.Find(handle) ? kOxNoError : kOxBadHandle; });
}

std::int32_t OxInitialize() {
    return RunStatus("OxInitialize", {}, Needs::Driver, [](DriverState&) { return kOxNoError; });
}

// Closes the connections of this process, as the real library does when it lets go.
std::int32_t OxTerminate() {
    return RunStatus("OxTerminate", {}, Needs::Library, [](DriverState& state) {
        state.DropConnections();
        return kOxNoError;
    });
}

std::int32_t OxGetNumDevices() {
    return Run<std::int32_t>("OxGetNumDevices", {}, Needs::Driver, -1,
                             [](DriverState& state) { return state.deviceType ? 1 : 0; });
}

std::int32_t OxGetDeviceID(OxHandle handle) {
    return Run<std::int32_t>("OxGetDeviceID", Args()("handle", handle), Needs::Driver, -1,
                             [&](DriverState& state) {
                                 if (state.Find(handle)) return 0;
                                 KvwErrorVal = kOxBadHandle;
                                 return -1;
                             });
}

std::int32_t OxDeviceIndex(std::int32_t deviceId) {
    return Run<std::int32_t>("OxDeviceIndex", Args()("device", deviceId), Needs::Driver, -1,
                             [&](DriverState&) {
                                 if (deviceId == 0 || deviceId == -1) return 0;
                                 KvwErrorVal = kOxBadValue;
                                 return -1;
                             });
}

std::int32_t OxDispatch(OxHandle handle, const OxEventData* data) {
    return Run<std::int32_t>("OxDispatch", Args()("handle", handle)("data", data), Needs::Driver, 0,
                             [&](DriverState&) { return 0; });
}

void OxOpenWinInit(OxWinData* data, void* window) {
    Run<int>("OxOpenWinInit", Args()("window", window), Needs::Library, 0, [&](DriverState&) {
        if (data) data->window = window;
        return 0;
    });
}

OxHandle OxOpen(const char* appName, std::int32_t deviceId, std::uint32_t mask, std::int32_t mode,
                const OxWinData* data) {
    Args args;
    args("app", appName)("device", deviceId)("mask", mask)("mode", mode);
    args("window", data ? data->window : nullptr);
    OxHandle handle = Run<OxHandle>("OxOpen", args, Needs::Driver, 0, [&](DriverState& state) {
        return OpenConnection(state, appName, deviceId, mask, mode, data);
    });
    if (handle == 0 && data) {
        // A stopped driver hears nothing; a running one that refused still knows the window.
        Control([&](DriverState& state) {
            if (state.running) RememberWindow(state, static_cast<HWND>(data->window));
        });
    }
    return handle;
}

std::int32_t OxClose(OxHandle handle) {
    return RunStatus("OxClose", Args()("handle", handle), Needs::Driver, [&](DriverState& state) {
        return state.connections.erase(handle) ? kOxNoError : kOxBadHandle;
    });
}

void OxGetEventWinInit(OxEventData* data, std::uint32_t message, std::uintptr_t wParam,
                       std::intptr_t lParam) {
    Run<int>("OxGetEventWinInit", Args()("message", message)("wParam", wParam)("lParam", lParam),
             Needs::Library, 0, [&](DriverState&) {
                 if (data) *data = OxEventData{message, wParam, lParam};
                 return 0;
             });
}

std::int32_t OxIsKelvaroEvent(OxHandle handle, const OxEventData* data) {
    return Run<std::int32_t>(
        "OxIsKelvaroEvent", Args()("handle", handle), Needs::Library, 0,
        [&](DriverState&) { return data && data->message == Messages().event ? 1 : 0; });
}

// A delivered record gives kOxIsEvent with the error variable cleared; an empty queue gives 0.
std::int32_t OxGetEvent(OxHandle handle, std::uint32_t flags, const OxEventData* data,
                        OxKvwEvent* event) {
    Args args;
    args("handle", handle)("flags", flags)("message", data ? data->message : 0u);
    std::int32_t status = RunStatus("OxGetEvent", args, Needs::Driver, [&](DriverState& state) {
        return data ? FrontEvent(state, handle, event, /*take=*/true) : kOxBadValue;
    });
    if (status == kOxIsEvent) KvwErrorVal = kOxNoError;
    return status;
}

std::int32_t OxPeekEvent(OxHandle handle, std::uint32_t flags, OxKvwEvent* event) {
    std::int32_t status =
        RunStatus("OxPeekEvent", Args()("handle", handle)("flags", flags), Needs::Driver,
                  [&](DriverState& state) { return FrontEvent(state, handle, event, false); });
    if (status == kOxIsEvent) KvwErrorVal = kOxNoError;
    return status;
}

std::int32_t OxRezero(OxHandle handle) {
    return RunStatus("OxRezero", Args()("handle", handle), Needs::Driver, [&](DriverState& state) {
        return state.Find(handle) ? kOxNoError : kOxBadHandle;
    });
}

std::int32_t OxGrabDevice(OxHandle handle, std::int32_t exclusive) {
    return RunStatus(
        "OxGrabDevice", Args()("handle", handle)("exclusive", exclusive), Needs::Driver,
        [&](DriverState& state) { return state.Find(handle) ? kOxNoError : kOxBadHandle; });
}

std::int32_t OxReleaseDevice(OxHandle handle) {
    return RunStatus(
        "OxReleaseDevice", Args()("handle", handle), Needs::Driver,
        [&](DriverState& state) { return state.Find(handle) ? kOxNoError : kOxBadHandle; });
}

std::int32_t OxButtonPressed(const OxKvwEvent* event) {
    return Run<std::int32_t>("OxButtonPressed", {}, Needs::Library, -1, [&](DriverState&) {
        if (event) return LowestButton(event->motion.pressed);
        KvwErrorVal = kOxBadValue;
        return -1;
    });
}

std::int32_t OxButtonReleased(const OxKvwEvent* event) {
    return Run<std::int32_t>("OxButtonReleased", {}, Needs::Library, -1, [&](DriverState&) {
        if (event) return LowestButton(event->motion.released);
        KvwErrorVal = kOxBadValue;
        return -1;
    });
}

std::int32_t OxSetUiMode(OxHandle handle, std::int32_t mode) {
    return RunStatus("OxSetUiMode", Args()("handle", handle)("mode", mode), Needs::Driver,
                     [&](DriverState& state) {
                         if (!state.Find(handle)) return kOxBadHandle;
                         state.uiModes.push_back(mode);
                         return kOxNoError;
                     });
}

std::int32_t OxGetDevicePort(OxHandle handle, char* port, std::uint32_t size) {
    return RunStatus(
        "OxGetDevicePort", Args()("handle", handle)("size", size), Needs::Driver,
        [&](DriverState& state) { return CopyFileName(state, handle, "USB", port, size); });
}

std::int32_t OxGetDriverInfo(OxVersionInfo* info) {
    return RunStatus("OxGetDriverInfo", {}, Needs::Driver, [&](DriverState& state) {
        if (!info) return kOxBadValue;
        *info = state.driverVersion;
        return kOxNoError;
    });
}

void OxGetLibraryInfo(OxVersionInfo* info) {
    Run<int>("OxGetLibraryInfo", {}, Needs::Library, 0, [&](DriverState& state) {
        if (info) *info = state.libraryVersion;
        return 0;
    });
}

std::int32_t OxGetDeviceInfo(OxHandle handle, OxDeviceInfo* info) {
    return RunStatus("OxGetDeviceInfo", Args()("handle", handle), Needs::Driver,
                     [&](DriverState& state) {
                         if (!info) return kOxBadValue;
                         if (!state.Find(handle)) return kOxBadHandle;
                         *info = OxDeviceInfo{};
                         std::strncpy(info->name, state.deviceName.c_str(), sizeof info->name - 1);
                         info->deviceType = state.deviceType;
                         info->aux = state.deviceAux;
                         return kOxNoError;
                     });
}

const char* KvwErrorString(std::int32_t error) {
    return Run<const char*>("KvwErrorString", Args()("error", error), Needs::Library, nullptr,
                            [&](DriverState&) { return OxErrorName(error); });
}

std::int32_t OxGetDeviceName(OxHandle handle, char* name, std::uint32_t size) {
    return RunStatus("OxGetDeviceName", Args()("handle", handle)("size", size), Needs::Driver,
                     [&](DriverState& state) {
                         return CopyFileName(state, handle, state.deviceName, name, size);
                     });
}

std::int32_t OxGetButtonName(OxHandle handle, std::int32_t button, OxButtonName* name) {
    return RunStatus("OxGetButtonName", Args()("handle", handle)("button", button), Needs::Driver,
                     [&](DriverState& state) {
                         if (!name) return kOxBadValue;
                         if (!state.Find(handle)) return kOxBadHandle;
                         auto named = state.buttonNames.find(button);
                         std::string text = named != state.buttonNames.end()
                                                ? named->second
                                                : "Button " + std::to_string(button);
                         *name = OxButtonName{};
                         std::strncpy(name->name, text.c_str(), sizeof name->name - 1);
                         return kOxNoError;
                     });
}

std::int32_t OxGetDeviceImageFileName(OxHandle handle, char* fileName, std::uint32_t size) {
    return RunStatus("OxGetDeviceImageFileName", Args()("handle", handle)("size", size),
                     Needs::Driver, [&](DriverState& state) {
                         return CopyFileName(state, handle, "device.png", fileName, size);
                     });
}

void* OxGetCompanyIcon(OxHandle handle) {
    return Run<void*>("OxGetCompanyIcon", Args()("handle", handle), Needs::Driver, nullptr,
                      [](DriverState&) -> void* { return nullptr; });
}

std::int32_t OxGetCompanyLogoFileName(OxHandle handle, char* fileName, std::uint32_t size) {
    return RunStatus("OxGetCompanyLogoFileName", Args()("handle", handle)("size", size),
                     Needs::Driver, [&](DriverState& state) {
                         return CopyFileName(state, handle, "logo.png", fileName, size);
                     });
}

std::int32_t OxSetLEDs(OxHandle handle, std::uint32_t mask) {
    return RunStatus(
        "OxSetLEDs", Args()("handle", handle)("mask", mask), Needs::Driver,
        [&](DriverState& state) { return state.Find(handle) ? kOxNoError : kOxBadHandle; });
}

OxHandle OxOpenPort(const char* appName, const char* port, std::int32_t mode,
                    const OxWinData* data) {
    Args args;
    args("app", appName)("port", port)("mode", mode)("window", data ? data->window : nullptr);
    return Run<OxHandle>("OxOpenPort", args, Needs::Driver, 0, [&](DriverState& state) {
        return OpenConnection(state, appName, -1, 0, mode, data);
    });
}

}  // extern "C"
