// The critical sections made through the DLL's imports (runtime_locks_win32.cpp).
#pragma once

namespace qvx::core {

/// Deletes the critical sections still alive outside the DLL's image, at unload, before the
/// DLL's heap goes.
void DeleteKeptLocks();

}  // namespace qvx::core
