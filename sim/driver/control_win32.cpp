// The control API for tests and scenarios. These calls are not recorded in the call log and
// are never refused.
#include "sim/driver/driver_messages_win32.h"
#include "sim/driver/driver_state_win32.h"
#include "sim/driver/exports_win32.h"

#include <cstdio>
#include <cstring>

using namespace qvx::simdriver;

namespace {

/// Copies `text` into `buffer` as far as it fits, terminated; the size the whole text needs.
std::uint32_t Give(const std::string& text, char* buffer, std::uint32_t size) {
    if (buffer && size > 0) {
        std::size_t length = std::min<std::size_t>(text.size(), size - 1);
        std::memcpy(buffer, text.data(), length);
        buffer[length] = '\0';
    }
    return static_cast<std::uint32_t>(text.size() + 1);
}

bool Starts(const std::string& text, const char* prefix, std::string& rest) {
    std::size_t length = std::strlen(prefix);
    if (text.compare(0, length, prefix) != 0) return false;
    rest = text.substr(length);
    return true;
}

/// The recorded item named `what`, if there is one.
bool FindRecord(DriverState& state, const std::string& what, std::string& text) {
    std::string key;
    if (what == "actions") {
        text = state.actionTree + state.images;
    } else if (what == "action-set") {
        text = state.actionSet;
    } else if (what == "active-action-set") {
        text = state.activeActionSet;
    } else if (what == "images") {
        text = state.images;
    } else if (what == "info-line") {
        text = state.infoLine;
    } else if (what == "message-box") {
        if (state.messageBoxes.empty()) return false;
        const MessageBoxCall& last = state.messageBoxes.back();
        text = last.caption + " | " + last.text + " | " + std::to_string(last.type);
    } else if (what == "connections") {
        for (const auto& [handle, connection] : state.connections) {
            text += std::to_string(handle) + ' ' + connection.appName +
                    " mode=" + std::to_string(connection.mode) + '\n';
        }
    } else if (what == "grab-sync-id") {
        for (const auto& [handle, connection] : state.connections) {
            text += std::to_string(handle) + ' ' + std::to_string(connection.grabSyncId) + '\n';
        }
    } else if (what == "events-waiting") {
        std::size_t waiting = 0;
        for (const auto& [handle, connection] : state.connections) {
            waiting += connection.events.size();
        }
        text = std::to_string(waiting);
    } else if (what == "sync-queries") {
        text = std::to_string(state.syncQueries);
    } else if (what == "config-writes") {
        for (const std::string& write : state.configWrites) text += write + '\n';
    } else if (what == "ui-modes") {
        for (std::int32_t mode : state.uiModes) text += std::to_string(mode) + '\n';
    } else if (Starts(what, "config:", key)) {
        auto found = state.configValues.find(key);
        if (found == state.configValues.end()) return false;
        text = found->second;
    } else {
        return false;
    }
    return true;
}

}  // namespace

extern "C" {

// A sender still waiting for its window after this long is left to finish by itself.
void SimDriverReset() {
    JoinSenders(/*timeoutMs=*/5000);
    Control([](DriverState& state) { state.Reset(); });
}

void SimDriverStop() {
    Control([](DriverState& state) {
        state.running = false;
        state.DropConnections();
    });
}

void SimDriverStart() {
    Control([](DriverState& state) { state.running = true; });
}

std::int32_t SimDriverIsRunning() {
    return Control([](DriverState& state) -> std::int32_t { return state.running; });
}

void SimDriverSetVersion(std::int32_t major, std::int32_t minor, std::int32_t build) {
    Control([&](DriverState& state) {
        OxVersionInfo& info = state.driverVersion;
        info.major = major;
        info.minor = minor;
        info.build = build;
        std::snprintf(info.version, sizeof info.version, "%d.%d.%d", major, minor, build);
    });
}

void SimDriverSetDevice(std::uint32_t deviceType, const char* name) {
    Control([&](DriverState& state) {
        state.deviceType = deviceType;
        if (name) state.deviceName = name;
    });
}

void SimDriverRefuse(const char* function, std::int32_t error) {
    Control([&](DriverState& state) {
        if (!function) return;
        if (error == kOxNoError) {
            state.refusals.erase(function);
        } else {
            state.refusals[function] = error;
        }
    });
}

void SimDriverRefuseNext(const char* function, std::int32_t error) {
    Control([&](DriverState& state) {
        if (!function) return;
        if (error == kOxNoError) {
            state.nextRefusals.erase(function);
        } else {
            state.nextRefusals[function] = error;
        }
    });
}

void SimDriverFailCall(const char* function, std::int32_t error, std::uint32_t nth) {
    Control([&](DriverState&) {
        if (function && nth > 0) Faults().FailCall(function, error, nth);
    });
}

std::uint32_t SimDriverReadCallTotals(char* buffer, std::uint32_t size) {
    return Control([&](DriverState&) { return Give(Faults().Totals(), buffer, size); });
}

void SimDriverSetMessageBoxAnswer(std::int32_t answer) {
    Control([&](DriverState& state) { state.messageBoxAnswer = answer; });
}

void SimDriverSetConfigValue(const char* key, const char* value) {
    Control([&](DriverState& state) {
        if (!key) return;
        if (value) {
            state.configValues[key] = value;
        } else {
            state.configValues.erase(key);
        }
    });
}

std::uint32_t SimDriverConnectionCount() {
    return Control(
        [](DriverState& state) { return static_cast<std::uint32_t>(state.connections.size()); });
}

std::uint32_t SimDriverCallCount(const char* function) {
    return Control([&](DriverState& state) -> std::uint32_t {
        if (!function) return 0;
        auto found = state.callCounts.find(function);
        return found == state.callCounts.end() ? 0 : found->second;
    });
}

std::uint32_t SimDriverReadLog(char* buffer, std::uint32_t size) {
    return Control([&](DriverState& state) {
        std::string text;
        for (const std::string& line : state.log) text += line + '\n';
        return Give(text, buffer, size);
    });
}

void SimDriverClearLog() {
    Control([](DriverState& state) {
        state.log.clear();
        state.callCounts.clear();
        state.configWrites.clear();
        state.uiModes.clear();
        state.messageBoxes.clear();
    });
}

std::uint32_t SimDriverReadRecord(const char* what, char* buffer, std::uint32_t size) {
    return Control([&](DriverState& state) -> std::uint32_t {
        std::string text;
        if (!what || !FindRecord(state, what, text)) return 0;
        return Give(text, buffer, size);
    });
}

std::int32_t SimDriverHasCallback() {
    return Control([](DriverState& state) -> std::int32_t { return state.callback != nullptr; });
}

void SimDriverSetLogging(std::int32_t on) {
    Control([&](DriverState& state) { state.logging = on != 0; });
}

}  // extern "C"
