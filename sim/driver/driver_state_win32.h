// The simulated driver: what the real driver keeps in its own process, kept here in the
// library for the life of the module. Every exported function reaches it through Run or
// RunStatus, which hold the one lock, record the call, and keep exceptions inside.
#pragma once

#include "client/oxapp/ox_records.h"
#include "client/detail/ox_errors.h"
#include "client/detail/ox_functions.h"
#include "sim/call_faults.h"
#include "support/windows_api.h"

#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <sstream>
#include <string>
#include <vector>

extern "C" {
/// The library's error variable: the code of the last call's failure, or 0.
extern std::int32_t KvwErrorVal;
}

namespace qvx::simdriver {

/// The error of every call that needs the driver while it is stopped.
inline constexpr std::int32_t kNotRunning = 1;

struct Connection {
    std::string appName;
    std::int32_t deviceId = -1;
    std::uint32_t mask = 0;
    std::int32_t mode = 0;
    HWND window = nullptr;
    std::uint32_t connectionId = 0;
    std::uint32_t grabSyncId = 0;
    std::uint32_t syncId = 0;
    /// Records waiting for OxGetEvent, oldest first.
    std::deque<OxKvwEvent> events;
};

/// What OxSyncSendQuery does with a query.
enum class SyncAnswer : std::int32_t {
    Ignore = 0,  ///< nothing: the application must carry on by itself
    Post = 1,    ///< posts "SyncCommandEvent" to the connection's window
    Send = 2,    ///< sends it from a thread of the driver's, as another process would
};

struct MessageBoxCall {
    std::string text;
    std::string caption;
    std::uint32_t type = 0;
};

struct DriverState {
    DriverState();
    /// Back to a running driver of major version 10 with one device, nothing recorded.
    void Reset();
    /// Forgets every connection, as a driver that stops does; old handles become bad.
    void DropConnections();
    Connection* Find(OxHandle handle);
    /// Appends `text` to the log line of the call being made, while the log is kept.
    void NoteOnCall(const std::string& text);

    // The driver and its device.
    bool running = true;
    OxVersionInfo driverVersion{};
    OxVersionInfo libraryVersion{};
    std::uint32_t deviceType = 0;
    std::uint32_t deviceAux = 0;
    std::string deviceName;

    // Connections.
    std::map<OxHandle, Connection> connections;
    OxHandle nextHandle = 1;
    std::uint32_t nextConnectionId = 0x100;
    OxEventCallback callback = nullptr;
    void* callbackContext = nullptr;
    /// Every window that ever asked for a connection, granted or refused, kept across stops, in
    /// order of first use.
    std::vector<HWND> windows;
    SyncAnswer syncAnswer = SyncAnswer::Post;
    std::uint32_t syncQueries = 0;

    // What applications told the driver.
    std::map<std::string, std::string> configValues;
    /// Every value an application set, "KEY=VALUE", in the order they came.
    std::vector<std::string> configWrites;
    /// The modes of every accepted request to show the driver's user interface.
    std::vector<std::int32_t> uiModes;
    // Trees and images as lines of client/oxapp/action_tree_text.h, made when they arrive,
    // since the application may free its records once the call returns.
    std::string actionTree;
    std::string actionSet;
    std::string activeActionSet;
    std::string images;
    std::vector<MessageBoxCall> messageBoxes;
    std::int32_t messageBoxAnswer = 1;
    std::map<std::int32_t, std::int32_t> buttonAssignments;
    std::map<std::int32_t, std::string> buttonNames;
    std::map<std::int32_t, std::string> axisLabels;
    std::map<std::int32_t, std::int32_t> filters;
    std::int32_t axesState = 0;
    std::int32_t orientation = 0;
    /// Overall, then Tx, Ty, Tz, Rx, Ry, Rz.
    float scales[7] = {};
    std::string infoLine;
    std::vector<std::string> buttonBanks;
    std::size_t currentBank = 0;

    // For tests and scenarios.
    std::map<std::string, std::int32_t> refusals;
    /// One-shot refusals: the next call of the function fails, later ones are admitted again.
    std::map<std::string, std::int32_t> nextRefusals;
    /// Whether calls are written to the log; they are counted either way.
    bool logging = true;
    std::vector<std::string> log;
    std::map<std::string, std::uint32_t> callCounts;
};

/// The one lock and the one state of the module.
std::mutex& Lock();
DriverState& State();
/// Calls made to fail by number, and every call counted; kept through resets, under Lock().
sim::CCallFaults& Faults();

/// Whether a function needs the driver running, or is the library's alone.
enum class Needs { Library, Driver };

/// Records the call and decides whether it may go on: 0, or the error it fails with.
std::int32_t Admit(DriverState& state, const char* name, const std::string& arguments, Needs needs);

/// A function whose result is not a status. `failure` is returned when the call is refused,
/// with KvwErrorVal set; `body` sets KvwErrorVal itself when it fails.
template <typename R, typename Body>
R Run(const char* name, const std::string& arguments, Needs needs, R failure, Body body) noexcept {
    try {
        std::lock_guard<std::mutex> guard(Lock());
        DriverState& state = State();
        if (std::int32_t error = Admit(state, name, arguments, needs)) {
            KvwErrorVal = error;
            return failure;
        }
        KvwErrorVal = kOxNoError;
        return body(state);
    } catch (...) {
        // Only allocation can throw in here.
        KvwErrorVal = kOxNotEnoughMemory;
        return failure;
    }
}

/// A function that returns a status, which also becomes KvwErrorVal.
template <typename Body>
std::int32_t RunStatus(const char* name, const std::string& arguments, Needs needs,
                       Body body) noexcept {
    try {
        std::lock_guard<std::mutex> guard(Lock());
        DriverState& state = State();
        std::int32_t status = Admit(state, name, arguments, needs);
        if (status == kOxNoError) status = body(state);
        KvwErrorVal = status;
        return status;
    } catch (...) {
        KvwErrorVal = kOxNotEnoughMemory;
        return kOxNotEnoughMemory;
    }
}

/// A function that needs an open connection: bad handles fail with kOxBadHandle before `body`
/// runs with the state and the connection.
template <typename Body>
std::int32_t OnConnection(const char* name, const std::string& arguments, OxHandle handle,
                          Body body) {
    return RunStatus(name, arguments, Needs::Driver, [&](DriverState& state) {
        Connection* connection = state.Find(handle);
        return connection ? body(state, *connection) : kOxBadHandle;
    });
}

/// A control function: under the lock, never logged, never refused, exceptions kept inside
/// (the result is then a zero value).
template <typename Body>
auto Control(Body body) noexcept {
    using Result = decltype(body(State()));
    try {
        std::lock_guard<std::mutex> guard(Lock());
        return body(State());
    } catch (...) {
        if constexpr (!std::is_void_v<Result>) return Result{};
    }
}

/// Builds the argument part of a log line: name=value pairs, texts quoted, null texts null.
class Args {
public:
    template <typename T>
    Args& operator()(const char* name, const T& value) {
        m_text << (m_text.tellp() > 0 ? " " : "") << name << '=';
        Put(value);
        return *this;
    }
    operator std::string() const { return m_text.str(); }

private:
    void Put(const char* text) {
        if (text) {
            m_text << '"' << text << '"';
        } else {
            m_text << "null";
        }
    }
    void Put(char* text) { Put(static_cast<const char*>(text)); }
    void Put(const std::string& text) { Put(text.c_str()); }
    void Put(const void* pointer) {
        if (pointer) {
            m_text << pointer;
        } else {
            m_text << "null";
        }
    }
    template <typename T>
    void Put(const T& value) {
        if constexpr (std::is_pointer_v<T>) {
            Put(reinterpret_cast<const void*>(value));
        } else {
            m_text << value;
        }
    }

    std::ostringstream m_text;
};

/// Copies `text` with its terminator into `buffer` of `size` bytes: 4 for a null buffer, 20
/// when it does not fit (nothing is written then).
std::int32_t CopyText(const std::string& text, char* buffer, std::uint32_t size);

}  // namespace qvx::simdriver
