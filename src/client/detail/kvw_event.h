// The driver's event record: 5,124 bytes, little-endian, a type word and a union by type.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {

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
    std::uint32_t kind;  ///< 1 command, 3 answer
    std::uint32_t code;
    std::uint32_t value;
};

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

namespace oxapp::detail {

class CKvwEvent : public OxKvwEvent {
public:
    /// A zero event: type 4, the motion fields cleared, period 16.
    CKvwEvent();
    /// A copy of a whole raw record.
    explicit CKvwEvent(const OxKvwEvent& raw);
    /// A record from two packed words. Type 2 unpacks two motion vectors (translation from
    /// `a`, rotation from `b`: low 11 bits x, middle 11 bits minus z, top 10 bits y, each a
    /// signed field); type 12 sets the pressed word and 13 the released word to 1 << (a & 31).
    CKvwEvent(std::uint32_t a, std::uint32_t b, std::uint32_t type);
    virtual ~CKvwEvent() = default;

    /// The type as the dispatcher sees it: a motion event with all six values zero is a zero
    /// event (4).
    std::uint32_t NormalisedType() const;
};

}  // namespace oxapp::detail
