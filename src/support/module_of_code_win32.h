// The module (DLL or program) whose image holds a given address: the one a window class or a
// resource of this code belongs to, whichever module the code was linked into.
#pragma once

#include "support/windows_api.h"

namespace qvx::os {

/// The module holding `address`; its reference count is left alone.
inline HMODULE ModuleContaining(const void* address) {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        static_cast<LPCWSTR>(address), &module);
    return module;
}

}  // namespace qvx::os
