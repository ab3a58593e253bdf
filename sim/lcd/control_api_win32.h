// The control API of the simulated LCD client library: what tests and scenarios use to run
// the LCD manager (start, stop, kill), let the panel's device come and go, press its soft
// buttons, and read what the applets sent. README.md beside this file describes each one.
// The library exports them by these names; CSimLcdControl binds them in a loaded copy.
#pragma once

#include "support/windows_api.h"

#include <cstdint>

//   X(name, result, (parameters))
#define SIM_LCD_CONTROL(X)                                                                  \
    X(SimLcdReset, void, ())                                                                \
    X(SimLcdStartManager, std::int32_t, ())                                                 \
    X(SimLcdStopManager, void, ())                                                          \
    X(SimLcdKillManager, void, ())                                                          \
    X(SimLcdDieOnNextFrame, void, ())                                                       \
    X(SimLcdManagerRunning, std::int32_t, ())                                               \
    X(SimLcdSetDevicePresent, void, (std::int32_t present))                                 \
    X(SimLcdSoftButtons, void, (std::uint32_t mask))                                        \
    X(SimLcdButtonMask, std::uint32_t, ())                                                  \
    X(SimLcdNotify, void, (std::uint32_t code, std::uint32_t param1))                       \
    X(SimLcdFlood, void, (std::uint32_t count, std::uint32_t code))                         \
    X(SimLcdSetInterfaceNull, void, (std::int32_t on))                                      \
    X(SimLcdSetFrameFolder, void, (const wchar_t* folder))                                  \
    X(SimLcdFrameCount, std::uint32_t, ())                                                  \
    X(SimLcdForeground, std::int32_t, ())                                                   \
    X(SimLcdConnectionCount, std::uint32_t, ())                                             \
    X(SimLcdConnectionName, std::uint32_t, (wchar_t * buffer, std::uint32_t size))          \
    X(SimLcdCallCount, std::uint32_t, (const char* function))                               \
    X(SimLcdReadLog, std::uint32_t, (char* buffer, std::uint32_t size))                     \
    X(SimLcdFailCall, void, (const char* function, std::uint32_t error, std::uint32_t nth)) \
    X(SimLcdReadCallTotals, std::uint32_t, (char* buffer, std::uint32_t size))

#define SIM_LCD_DECLARE_TYPE(name, result, parameters) using name##_fn = result parameters;
extern "C" {
SIM_LCD_CONTROL(SIM_LCD_DECLARE_TYPE)
}
#undef SIM_LCD_DECLARE_TYPE

namespace qvx::simlcd {

/// The control functions of one loaded copy of the library. The module must stay loaded
/// while they are used.
struct CSimLcdControl {
#define SIM_LCD_ENTRY(name, result, parameters) name##_fn* name = nullptr;
    SIM_LCD_CONTROL(SIM_LCD_ENTRY)
#undef SIM_LCD_ENTRY

    /// Binds every function; false if the module lacks any of them.
    bool Bind(HMODULE module) {
        bool complete = true;
#define SIM_LCD_BIND(name, result, parameters)                                                     \
    name =                                                                                         \
        reinterpret_cast<name##_fn*>(reinterpret_cast<void (*)()>(GetProcAddress(module, #name))); \
    complete = complete && name != nullptr;
        SIM_LCD_CONTROL(SIM_LCD_BIND)
#undef SIM_LCD_BIND
        return complete;
    }
};

}  // namespace qvx::simlcd
