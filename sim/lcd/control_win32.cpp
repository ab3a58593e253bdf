// The control API of the simulated LCD library (control_api_win32.h).
#include "control_api_win32.h"

#include "lcd_state_win32.h"

#include <algorithm>
#include <cstring>

using namespace qvx::simlcd;

extern "C" {

__declspec(dllexport) void SimLcdReset() {
    StopManager();
    std::lock_guard<std::mutex> guard(Lock());
    State() = CLcdState{};
}

__declspec(dllexport) std::int32_t SimLcdStartManager() { return StartManager() ? 1 : 0; }
__declspec(dllexport) void SimLcdStopManager() { StopManager(); }
__declspec(dllexport) void SimLcdKillManager() { KillManager(); }
__declspec(dllexport) std::int32_t SimLcdManagerRunning() { return ManagerRunning() ? 1 : 0; }

__declspec(dllexport) void SimLcdDieOnNextFrame() {
    std::lock_guard<std::mutex> guard(Lock());
    State().dieOnNextFrame = true;
}

__declspec(dllexport) void SimLcdSetDevicePresent(std::int32_t present) {
    {
        std::lock_guard<std::mutex> guard(Lock());
        State().devicePresent = present != 0;
        if (!present) State().buttons = 0;  // a device that is gone holds no buttons
        LogLine(present ? "device arrives" : "device removed");
    }
    DeliverNotification(
        -1, present ? qvx::lcd::kLmNotifyDeviceArrival : qvx::lcd::kLmNotifyDeviceRemoval,
        qvx::lcd::kLmDeviceColor);
}

__declspec(dllexport) void SimLcdSoftButtons(std::uint32_t mask) { DeliverButtons(mask); }

__declspec(dllexport) std::uint32_t SimLcdButtonMask() {
    std::lock_guard<std::mutex> guard(Lock());
    return State().buttons;
}

__declspec(dllexport) void SimLcdNotify(std::uint32_t code, std::uint32_t param1) {
    DeliverNotification(-1, code, param1);
}

__declspec(dllexport) void SimLcdFlood(std::uint32_t count, std::uint32_t code) {
    DeliverFlood(count, code);
}

__declspec(dllexport) void SimLcdSetInterfaceNull(std::int32_t on) {
    std::lock_guard<std::mutex> guard(Lock());
    State().interfaceNull = on != 0;
}

__declspec(dllexport) void SimLcdSetFrameFolder(const wchar_t* folder) {
    std::lock_guard<std::mutex> guard(Lock());
    State().frameFolder = folder ? folder : L"";
}

__declspec(dllexport) std::uint32_t SimLcdFrameCount() {
    std::lock_guard<std::mutex> guard(Lock());
    return State().frames;
}

__declspec(dllexport) std::int32_t SimLcdForeground() {
    std::lock_guard<std::mutex> guard(Lock());
    const auto& devices = State().devices;
    return std::any_of(devices.begin(), devices.end(),
                       [](const auto& d) { return d.second.foreground; })
               ? 1
               : 0;
}

__declspec(dllexport) std::uint32_t SimLcdConnectionCount() {
    std::lock_guard<std::mutex> guard(Lock());
    return static_cast<std::uint32_t>(State().connections.size());
}

__declspec(dllexport) std::uint32_t SimLcdConnectionName(wchar_t* buffer, std::uint32_t size) {
    std::lock_guard<std::mutex> guard(Lock());
    const std::wstring& name = State().lastName;
    if (buffer && size > name.size()) std::wcscpy(buffer, name.c_str());
    return static_cast<std::uint32_t>(name.size());
}

__declspec(dllexport) std::uint32_t SimLcdCallCount(const char* function) {
    std::lock_guard<std::mutex> guard(Lock());
    auto found = State().calls.find(function ? function : "");
    return found == State().calls.end() ? 0 : found->second;
}

__declspec(dllexport) std::uint32_t SimLcdReadLog(char* buffer, std::uint32_t size) {
    std::lock_guard<std::mutex> guard(Lock());
    std::string text;
    for (const auto& line : State().log) text += line + "\n";
    if (buffer && size > text.size()) std::memcpy(buffer, text.c_str(), text.size() + 1);
    return static_cast<std::uint32_t>(text.size());
}

__declspec(dllexport) void SimLcdFailCall(const char* function, std::uint32_t error,
                                          std::uint32_t nth) {
    std::lock_guard<std::mutex> guard(Lock());
    if (function && nth > 0) Faults().FailCall(function, static_cast<std::int32_t>(error), nth);
}

/// Like SimLcdReadLog: the length without terminator; copied only when it fits.
__declspec(dllexport) std::uint32_t SimLcdReadCallTotals(char* buffer, std::uint32_t size) {
    std::lock_guard<std::mutex> guard(Lock());
    std::string text = Faults().Totals();
    if (buffer && size > text.size()) std::memcpy(buffer, text.c_str(), text.size() + 1);
    return static_cast<std::uint32_t>(text.size());
}

}  // extern "C"
