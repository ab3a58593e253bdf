// A function of the system's kernel32, looked up by name. The DLL's replaced imports reach the
// system's own functions this way: calling them by name would come back to the replacement.
#pragma once

#include "support/windows_api.h"

namespace qvx::core {

/// The function `name` of kernel32 as `Function`; null if it is missing.
template <typename Function>
Function KernelFunction(const char* name) {
    HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    return kernel
               ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(kernel, name)))
               : nullptr;
}

}  // namespace qvx::core
