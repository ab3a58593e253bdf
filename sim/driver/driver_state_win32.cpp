#include "sim/driver/driver_state_win32.h"

#include <cstdio>
#include <cstring>

extern "C" {
std::int32_t KvwErrorVal = 0;
}

namespace qvx::simdriver {
namespace {

void SetVersion(OxVersionInfo& info, std::int32_t major, std::int32_t minor, std::int32_t build,
                const char* date) {
    info = OxVersionInfo{};
    info.major = major;
    info.minor = minor;
    info.build = build;
    std::snprintf(info.version, sizeof info.version, "%d.%d.%d", major, minor, build);
    std::snprintf(info.date, sizeof info.date, "%s", date);
}

}  // namespace

DriverState::DriverState() {
    SetVersion(driverVersion, 10, 8, 4, "2024-03-18");
    SetVersion(libraryVersion, 10, 8, 4, "2024-03-18");
    deviceType = 29;
    deviceName = "Simulated 3D mouse";
    for (float& scale : scales) scale = 1.0f;
}

void DriverState::Reset() { *this = DriverState(); }

void DriverState::DropConnections() { connections.clear(); }

Connection* DriverState::Find(OxHandle handle) {
    auto found = connections.find(handle);
    return found == connections.end() ? nullptr : &found->second;
}

void DriverState::NoteOnCall(const std::string& text) {
    if (logging && !log.empty()) log.back() += ' ' + text;
}

std::mutex& Lock() {
    static std::mutex lock;
    return lock;
}

DriverState& State() {
    static DriverState state;
    return state;
}

sim::CCallFaults& Faults() {
    static sim::CCallFaults faults;
    return faults;
}

std::int32_t Admit(DriverState& state, const char* name, const std::string& arguments,
                   Needs needs) {
    if (state.logging) {
        state.log.push_back(arguments.empty() ? std::string(name) : name + (" " + arguments));
    }
    ++state.callCounts[name];
    if (std::int32_t error = Faults().Take(name)) return error;
    auto once = state.nextRefusals.find(name);
    if (once != state.nextRefusals.end()) {
        std::int32_t error = once->second;
        state.nextRefusals.erase(once);
        return error;
    }
    auto refused = state.refusals.find(name);
    if (refused == state.refusals.end()) refused = state.refusals.find("*");
    if (refused != state.refusals.end()) return refused->second;
    if (needs == Needs::Driver && !state.running) return kNotRunning;
    return kOxNoError;
}

std::int32_t CopyText(const std::string& text, char* buffer, std::uint32_t size) {
    if (!buffer) return kOxBadValue;
    if (size <= text.size()) return kOxNotEnoughMemory;
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return kOxNoError;
}

}  // namespace qvx::simdriver
