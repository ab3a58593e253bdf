#include "support/own_module_win32.h"

#include "support/module_of_code_win32.h"

namespace qvx {

HMODULE OwnModule() { return os::ModuleContaining(reinterpret_cast<const void*>(&OwnModule)); }

}  // namespace qvx
