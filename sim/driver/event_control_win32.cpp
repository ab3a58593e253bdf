// The control functions that make the driver speak: events through the windows of the
// connections or through the registered callback, and the driver's command messages. Windows
// are posted to and callbacks called after the lock is let go, since the receiver calls back
// into the library.
#include "sim/driver/driver_messages_win32.h"
#include "sim/driver/driver_state_win32.h"
#include "sim/driver/exports_win32.h"

#include <utility>
#include <vector>

using namespace qvx::simdriver;

extern "C" {

std::uint32_t SimDriverSendEvent(const OxKvwEvent* event) {
    if (!event) return 0;
    auto targets = Control([&](DriverState& state) {
        std::vector<std::pair<HWND, OxHandle>> targets;
        for (auto& [handle, connection] : state.connections) {
            if (!connection.window) continue;
            connection.events.push_back(*event);
            targets.emplace_back(connection.window, handle);
        }
        return targets;
    });
    for (const auto& [window, handle] : targets) {
        PostMessageW(window, Messages().event, handle, 0);
    }
    return static_cast<std::uint32_t>(targets.size());
}

std::int32_t SimDriverCallEvent(const OxKvwEvent* event) {
    auto [callback, context] = Control(
        [](DriverState& state) { return std::make_pair(state.callback, state.callbackContext); });
    if (!callback || !event) return -2;
    // The library hands the callback a record of its own, not the caller's.
    OxKvwEvent record = *event;
    try {
        return callback(&record, context);
    } catch (...) {
        return -1;
    }
}

std::uint32_t SimDriverPostCommandEvent(std::uint32_t wParam) {
    auto windows = Control([](DriverState& state) { return state.windows; });
    std::uint32_t posted = 0;
    for (HWND window : windows) {
        if (IsWindow(window) && PostMessageW(window, Messages().command, wParam, 0)) ++posted;
    }
    return posted;
}

void SimDriverSetSyncAnswer(std::int32_t mode) {
    Control([&](DriverState& state) {
        if (mode >= 0 && mode <= 2) state.syncAnswer = static_cast<SyncAnswer>(mode);
    });
}

}  // extern "C"
