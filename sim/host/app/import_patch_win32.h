// Points one import of a loaded module at a function of the host, so that the host can
// answer a system call the plug-in makes (the current OpenGL device context, the help viewer).
#pragma once

#include "support/windows_api.h"

namespace sim {

/// Replaces `module`'s import of `function` from `dll` (compared without case) by
/// `replacement`. False when the module imports no such function by name.
bool PatchImport(HMODULE module, const char* dll, const char* function, void* replacement);

}  // namespace sim
