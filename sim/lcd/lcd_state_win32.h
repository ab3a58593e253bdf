// The simulated LCD library's one state, under one lock: whether the manager runs, the
// applets connected to it, the devices they opened, what they sent, and the call log.
#pragma once

#include "lcd/widgets/lm_lcd_api.h"
#include "sim/call_faults.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace qvx::simlcd {

struct CConnection {
    std::wstring name;
    lcd::LmNotifyProc onNotify = nullptr;
    void* notifyContext = nullptr;
};

struct CDevice {
    std::int32_t connection = 0;
    std::int32_t type = 0;
    lcd::LmSoftButtonsProc onButtons = nullptr;
    void* buttonsContext = nullptr;
    bool foreground = false;
};

struct CLcdState {
    bool interfaceNull = false;
    int initCount = 0;
    bool devicePresent = true;
    bool dieOnNextFrame = false;
    std::int32_t nextConnection = 1;
    std::int32_t nextDevice = 1;
    std::map<std::int32_t, CConnection> connections;
    std::map<std::int32_t, CDevice> devices;
    std::wstring lastName;
    std::uint32_t buttons = 0;
    std::uint32_t frames = 0;
    std::wstring frameFolder;
    std::vector<std::string> log;
    std::map<std::string, std::uint32_t> calls;
};

std::mutex& Lock();
/// Valid only under Lock().
CLcdState& State();
/// Calls made to fail by number, and every call counted; kept through resets, under Lock().
sim::CCallFaults& Faults();
/// Adds a line to the call log; under Lock().
void LogLine(const std::string& line);

/// The manager: a thread with a window of the manager's class, which delivers notifications
/// and soft buttons to the applets. Called without the lock held.
bool StartManager();
/// Orderly: each applet hears that the device went and the connection closed.
void StopManager();
/// Unannounced death: each applet hears only that its connection closed.
void KillManager();
bool ManagerRunning();

/// What the manager's thread calls: one notification to one connection, or to all (-1).
void DeliverNotification(std::int32_t connection, std::uint32_t code, std::uint32_t param1);
/// The mask to every open device.
void DeliverButtons(std::uint32_t mask);
/// Runs `count` notifications of `code` on the manager's thread as fast as it can.
void DeliverFlood(std::uint32_t count, std::uint32_t code);
/// The device arrives for one new connection, later, on the manager's thread.
void AnnounceDevice(std::int32_t connection);

/// Writes a frame as a PNG file in the frame folder; the file's name, or empty.
std::wstring WriteFramePng(const std::wstring& folder, std::uint32_t number,
                           const lcd::LmBitmapHeader& bitmap);

}  // namespace qvx::simlcd
