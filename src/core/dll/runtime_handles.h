// The handles the runtime opens through the DLL's imports (runtime_handles_win32.cpp).
#pragma once

namespace qvx::core {

/// Closes the handles the runtime opened and left open, at unload.
void CloseKeptHandles();

}  // namespace qvx::core
