// Declarations of everything the library exports, generated from the same tables as the
// client's, so that a definition with another signature does not compile.
#pragma once

#include "client/detail/ox_functions.h"
#include "sim/driver/control_api_win32.h"

#include <cstdint>

extern "C" {
#define SIM_DECLARE_EXPORT(name, presence, form, result, parameters, arguments) \
    result name parameters;
OX_FUNCTIONS(SIM_DECLARE_EXPORT)
#undef SIM_DECLARE_EXPORT

#define SIM_DECLARE_CONTROL(name, result, parameters) result name parameters;
SIM_DRIVER_CONTROL(SIM_DECLARE_CONTROL)
#undef SIM_DECLARE_CONTROL

RegisterCallback_fn RegisterCallback;
UnregisterCallback_fn UnregisterCallback;
}
