// Error codes of the driver's client library and of the shim in front of it, and the shim's
// load states and load results.
#pragma once

#include <cstdint>

// The library's codes.
inline constexpr std::int32_t kOxNoError = 0;
inline constexpr std::int32_t kOxBadHandle = 2;
/// Also the shim's answer to a null argument that it tests itself.
inline constexpr std::int32_t kOxBadValue = 4;
inline constexpr std::int32_t kOxNotEnoughMemory = 20;
/// Result of OxGetEvent for a message that carried a driver event.
inline constexpr std::int32_t kOxIsEvent = 5;

// The shim's own codes.
/// Result of a status wrapper whose optional function the library lacks.
inline constexpr std::int32_t kOxUnsupported = 10;
/// Result (or g_lastError) when the library could not be loaded.
inline constexpr std::int32_t kOxLibraryMissing = 16;
/// g_lastError when an optional function is missing.
inline constexpr std::int32_t kOxFunctionMissing = 18;

/// The name of a library code, as the driver's documentation spells it.
constexpr const char* OxErrorName(std::int32_t error) {
    switch (error) {
        case kOxNoError:
            return "KVW_NO_ERROR";
        case kOxBadHandle:
            return "OX_BAD_HANDLE";
        case kOxBadValue:
            return "OX_BAD_VALUE";
        case kOxNotEnoughMemory:
            return "OX_NOT_ENOUGH_MEMORY";
        default:
            return "KVW_UNKNOWN_ERROR";
    }
}

/// g_loadState.
enum OxLoadState : std::int32_t {
    kOxNotLoaded = 0,
    kOxLoadFailed = 1,
    kOxLoaded = 2,
};

/// What the loader returns.
enum OxLoadResult : std::int32_t {
    kOxLoadComplete = 0,
    kOxLoadNoLibrary = 1,
    kOxLoadRequiredMissing = 2,
    kOxLoadNoErrorVariable = 3,
};
