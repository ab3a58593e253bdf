// The records that cross the boundary into the driver's client library, as that library
// lays them out: little-endian, natural alignment. Portable: the simulated library and the
// client both build on these declarations, so the two cannot disagree.
#pragma once

#include <cstdint>

extern "C" {

/// A connection to the driver; 0 is none.
using OxHandle = std::uint32_t;

/// Versions of the driver (OxGetDriverInfo) and of the library (OxGetLibraryInfo).
struct OxVersionInfo {
    std::int32_t major;
    std::int32_t minor;
    std::int32_t build;
    char version[128];
    char date[128];
};
static_assert(sizeof(OxVersionInfo) == 268);

/// The device of a connection (OxGetDeviceInfo). `aux` is the driver's own word.
struct OxDeviceInfo {
    char name[128];
    std::uint32_t deviceType;
    std::uint32_t aux;
    std::uint8_t reserved[232];
};
static_assert(sizeof(OxDeviceInfo) == 368);

/// A button's name (OxGetButtonName, OxGetButtonNameV3DK): narrow text, terminated.
struct OxButtonName {
    char name[128];
};

/// What OxOpenWinInit fills for OxOpen: the window the driver posts its messages to.
struct OxWinData {
    void* window;
};

/// What OxGetEventWinInit fills for OxGetEvent: the window message that announced an event.
struct OxEventData {
    std::uint32_t message;
    std::uintptr_t wParam;
    std::intptr_t lParam;
};

/// A driver event, 5124 bytes; declared with its layout in kvw_event.h.
struct OxKvwEvent;

/// A node of the action tree: 0 an action set, 1 a category, 2 an action. 28 bytes in a
/// 32-bit process, where every pointer is a 32-bit word; `size` is the size in this one.
struct oxActionNodeEx_s {
    std::uint32_t size;
    std::uint32_t type;
    oxActionNodeEx_s* next;
    oxActionNodeEx_s* children;
    const char* id;
    const char* label;
    const char* description;
};
static_assert(sizeof(oxActionNodeEx_s) == (sizeof(void*) == 4 ? 28 : 48));

/// An image of an action: 0 none, 1 a file, 2 a resource in a module, 3 bytes in memory.
/// A resource's id and type are texts, or integers when their value is at most 65535.
struct oxImage_t {
    std::uint32_t size;
    std::uint32_t type;
    const char* id;
    union {
        struct {
            const char* fileName;
            std::uint32_t index;
        } file;
        struct {
            const char* fileName;
            const char* resourceId;
            const char* resourceType;
            std::uint32_t index;
        } resource;
        struct {
            const std::uint8_t* data;
            std::uint32_t dataSize;
            std::uint32_t index;
        } memory;
    };
};
static_assert(sizeof(oxImage_t) == (sizeof(void*) == 4 ? 28 : 48));

/// The library calls this with each event when a callback is registered, on a thread of its
/// choosing; 0 means handled, -1 not.
using OxEventCallback = std::int32_t (*)(const OxKvwEvent* event, void* context);
/// Told of a changed configuration value.
using OxValueChangedHandler = void (*)(OxHandle handle, const char* key, void* context);

}  // extern "C"
