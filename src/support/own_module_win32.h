// The module (the plug-in DLL, or a test program) that the plug-in's code is linked into:
// where its resources are.
#pragma once

#include "support/windows_api.h"

namespace qvx {

/// The module holding this library's code; no reference is added.
HMODULE OwnModule();

}  // namespace qvx
