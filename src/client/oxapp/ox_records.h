// The records that cross the boundary into the driver's client library, as that library
// lays them out: little-endian, natural alignment, and the numbers that their fields carry.
// Portable: the simulated library and the client both build on these declarations, so the
// two cannot disagree.
#pragma once

#include "client/oxapp/action_records.h"

#include <cstddef>
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

/// Types 2 (motion) and 4 (zero motion).
struct OxKvwMotion {
    std::uint32_t last;  ///< button words, not read
    std::uint32_t current;
    std::uint32_t pressed;
    std::uint32_t released;
    std::int32_t tx, ty, tz, rx, ry, rz;
    std::int32_t period;  ///< 16 in a zero event the client makes
};

/// Types 12 (key down) and 13 (key up).
struct OxKvwKey {
    std::uint32_t key;
};

/// Type 10: the identifier of an action, pressed or released.
struct OxKvwCommand {
    std::uint32_t pressed;
    char command[500];  ///< zero-terminated, when the driver terminates it
};

/// Type 17: a numeric command with two blocks of 16 words.
struct OxKvwMatrixCommand {
    std::uint32_t pressed;
    std::uint32_t id;
    std::uint32_t blockA[16];
    std::uint32_t blockB[16];
};

/// Type 11: one step of the sync exchange.
struct OxKvwSync {
    std::uint32_t reserved;
    std::uint32_t syncId;
    std::uint32_t kind;  ///< an OxSyncKind
    std::uint32_t code;  ///< an OxSyncCode
    std::uint32_t value;
};

/// A driver event: 5,124 bytes, a type word (an OxEventType) and a union by type.
struct OxKvwEvent {
    std::uint32_t type;
    union {
        OxKvwMotion motion;
        OxKvwKey key;
        OxKvwCommand command;
        OxKvwMatrixCommand matrixCommand;
        OxKvwSync sync;
        unsigned char raw[5120];
    };
};

/// The library calls this with each event when a callback is registered, on a thread of its
/// choosing; 0 means handled, -1 not.
using OxEventCallback = std::int32_t (*)(const OxKvwEvent* event, void* context);
/// Told of a changed configuration value.
using OxValueChangedHandler = void (*)(OxHandle handle, const char* key, void* context);

}  // extern "C"

static_assert(sizeof(OxKvwEvent) == 5124);
static_assert(offsetof(OxKvwEvent, motion) == 4);
static_assert(offsetof(OxKvwEvent, motion.tx) == 20);
static_assert(offsetof(OxKvwEvent, motion.rz) == 40);
static_assert(offsetof(OxKvwEvent, motion.period) == 44);
static_assert(offsetof(OxKvwEvent, key.key) == 4);
static_assert(offsetof(OxKvwEvent, command.pressed) == 4);
static_assert(offsetof(OxKvwEvent, command.command) == 8);
static_assert(offsetof(OxKvwEvent, matrixCommand.id) == 8);
static_assert(offsetof(OxKvwEvent, matrixCommand.blockA) == 12);
static_assert(offsetof(OxKvwEvent, matrixCommand.blockB) == 76);
static_assert(offsetof(OxKvwEvent, sync.syncId) == 8);
static_assert(offsetof(OxKvwEvent, sync.kind) == 12);
static_assert(offsetof(OxKvwEvent, sync.code) == 16);
static_assert(offsetof(OxKvwEvent, sync.value) == 20);

/// The type word of an event record.
enum OxEventType : std::uint32_t {
    /// Not sent by the driver: the question whether key events would pass, asked by injection.
    kOxEventKeyQuery = 1,
    kOxEventMotion = 2,
    /// Motion has stopped; also a motion record whose six values are all zero.
    kOxEventZeroMotion = 4,
    kOxEventCommand = 10,
    kOxEventSync = 11,
    kOxEventKeyDown = 12,
    kOxEventKeyUp = 13,
    kOxEventMatrixCommand = 17,
    kOxEventValueChanged = 19,
    kOxEventConnectionChanged = 20,
};

/// The `kind` of a sync record.
enum OxSyncKind : std::uint32_t {
    /// From the driver, or from the client to itself: `code` says what to do.
    kOxSyncCommand = 1,
    /// The driver answers a query: `code` says what, `value` carries it.
    kOxSyncAnswer = 3,
};

/// The `code` of a sync record: a command under kOxSyncCommand, an answer under kOxSyncAnswer.
enum OxSyncCode : std::uint32_t {
    kOxSyncFull = 2,  ///< command: read the driver's whole state for this application
    kOxSyncFunctionCount = 4,
    kOxSyncFunction = 5,  ///< `value` is the function's index
    kOxSyncButtonAssignment = 6,
    kOxSyncOrientation = 10,
    kOxSyncFilter = 11,
    kOxSyncAxesState = 12,
    kOxSyncScaleOverall = 14,
};
