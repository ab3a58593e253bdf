// The control API of the simulated driver library: what tests and scenarios use to run the
// driver (stop, start, change its version, refuse calls) and to read what applications told
// it. README.md beside this file describes each function. The library exports them by these
// names; CSimDriverControl binds them in a loaded copy of the library.
#pragma once

#include "client/oxapp/ox_records.h"
#include "support/windows_api.h"

#include <cstdint>
#include <string>

//   X(name, result, (parameters))
#define SIM_DRIVER_CONTROL(X)                                                                   \
    X(SimDriverReset, void, ())                                                                 \
    X(SimDriverStop, void, ())                                                                  \
    X(SimDriverStart, void, ())                                                                 \
    X(SimDriverIsRunning, std::int32_t, ())                                                     \
    X(SimDriverSetVersion, void, (std::int32_t major, std::int32_t minor, std::int32_t build))  \
    X(SimDriverSetDevice, void, (std::uint32_t deviceType, const char* name))                   \
    X(SimDriverRefuse, void, (const char* function, std::int32_t error))                        \
    X(SimDriverRefuseNext, void, (const char* function, std::int32_t error))                    \
    X(SimDriverFailCall, void, (const char* function, std::int32_t error, std::uint32_t nth))   \
    X(SimDriverReadCallTotals, std::uint32_t, (char* buffer, std::uint32_t size))               \
    X(SimDriverSetMessageBoxAnswer, void, (std::int32_t answer))                                \
    X(SimDriverSetConfigValue, void, (const char* key, const char* value))                      \
    X(SimDriverConnectionCount, std::uint32_t, ())                                              \
    X(SimDriverCallCount, std::uint32_t, (const char* function))                                \
    X(SimDriverReadLog, std::uint32_t, (char* buffer, std::uint32_t size))                      \
    X(SimDriverClearLog, void, ())                                                              \
    X(SimDriverReadRecord, std::uint32_t, (const char* what, char* buffer, std::uint32_t size)) \
    X(SimDriverHasCallback, std::int32_t, ())                                                   \
    X(SimDriverSendEvent, std::uint32_t, (const OxKvwEvent* event))                             \
    X(SimDriverCallEvent, std::int32_t, (const OxKvwEvent* event))                              \
    X(SimDriverPostCommandEvent, std::uint32_t, (std::uint32_t wParam))                         \
    X(SimDriverSetSyncAnswer, void, (std::int32_t mode))                                        \
    X(SimDriverSetLogging, void, (std::int32_t on))

#define SIM_DRIVER_DECLARE_TYPE(name, result, parameters) using name##_fn = result parameters;
extern "C" {
SIM_DRIVER_CONTROL(SIM_DRIVER_DECLARE_TYPE)
}
#undef SIM_DRIVER_DECLARE_TYPE

namespace qvx::simdriver {

/// The control functions of one loaded copy of the library. The module must stay loaded
/// while they are used.
struct CSimDriverControl {
#define SIM_DRIVER_ENTRY(name, result, parameters) name##_fn* name = nullptr;
    SIM_DRIVER_CONTROL(SIM_DRIVER_ENTRY)
#undef SIM_DRIVER_ENTRY

    /// Binds every function; false if the module lacks any of them.
    bool Bind(HMODULE module) {
        bool complete = true;
#define SIM_DRIVER_BIND(name, result, parameters)                                                  \
    name =                                                                                         \
        reinterpret_cast<name##_fn*>(reinterpret_cast<void (*)()>(GetProcAddress(module, #name))); \
    complete = complete && name != nullptr;
        SIM_DRIVER_CONTROL(SIM_DRIVER_BIND)
#undef SIM_DRIVER_BIND
        return complete;
    }

    /// The call log, one line per call.
    std::string Log() const {
        return Read([&](char* b, std::uint32_t s) { return SimDriverReadLog(b, s); });
    }
    /// Every function called since the library was loaded, one "NAME COUNT" line each.
    std::string CallTotals() const {
        return Read([&](char* b, std::uint32_t s) { return SimDriverReadCallTotals(b, s); });
    }
    /// A recorded item (see README.md); empty when there is none.
    std::string Record(const char* what) const {
        return Read([&](char* b, std::uint32_t s) { return SimDriverReadRecord(what, b, s); });
    }

private:
    template <typename Reader>
    static std::string Read(Reader reader) {
        std::uint32_t needed = reader(nullptr, 0);
        if (needed == 0) return {};
        std::string text(needed, '\0');
        reader(text.data(), needed);
        text.resize(needed - 1);
        return text;
    }
};

}  // namespace qvx::simdriver
