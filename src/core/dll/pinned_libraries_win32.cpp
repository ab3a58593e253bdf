// The system libraries that stay in the host's process once the plug-in has brought them in.
// The multimedia library (the animations' timer resolution) comes with the DLL's imports and
// would go with its unload, to be loaded again by the next load; under Wine each of its
// unloads leaves the registry keys of the audio codecs it found open. Pinned, it is loaded
// once per process, as in a host that uses it itself.
#include "support/windows_api.h"

namespace {

__attribute__((constructor)) void PinSystemLibraries() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN, L"winmm.dll", &module);
}

}  // namespace
