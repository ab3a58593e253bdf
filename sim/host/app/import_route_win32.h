// Where Wine's null display driver lacks what a Windows desktop has, the host answers some of
// the plug-in's system calls itself: it points the plug-in's import of the function at one of
// its own, which usually asks the system first.
#pragma once

#include "support/windows_api.h"

namespace sim {

/// Points `module`'s import of `function` from `dll` at `replacement`. False when the module
/// does not import it by name.
bool RouteImport(HMODULE module, const char* dll, const char* function, const void* replacement);

}  // namespace sim
