// Any bytes as the driver's event record, as the dispatcher takes it: the record copied whole,
// its type as the dispatcher sorts it, and a command's text, which is read only up to a
// terminator inside its field and parsed as an action. Also any two words and a type through
// the packed constructor, whose motion fields must stay in their signed ranges.
#include "catalogue/action.h"
#include "client/detail/kvw_event.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

namespace {

bool InRange(std::int32_t value, int bits) {
    return value >= -(1 << (bits - 1)) && value < (1 << (bits - 1));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    OxKvwEvent raw{};
    std::memcpy(&raw, data, size < sizeof raw ? size : sizeof raw);
    oxapp::detail::CKvwEvent event(raw);
    if (std::memcmp(&static_cast<const OxKvwEvent&>(event), &raw, sizeof raw) != 0) std::abort();
    const OxKvwMotion& m = event.motion;
    bool still = m.tx == 0 && m.ty == 0 && m.tz == 0 && m.rx == 0 && m.ry == 0 && m.rz == 0;
    std::uint32_t type = event.NormalisedType();
    if (type != (raw.type == kOxEventMotion && still ? kOxEventZeroMotion : raw.type)) std::abort();

    if (raw.type == kOxEventCommand) {
        const char* text = event.command.command;
        std::size_t length = strnlen(text, sizeof event.command.command);
        if (length > 0 && length < sizeof event.command.command) {
            // An identifier read once is in its normal form: writing and reading it again
            // gives the same identifier.
            CAction action;
            std::istringstream in(std::string(text, length));
            in >> action;
            std::string once = action.ToIdentifier();
            CAction again;
            std::istringstream in2(once);
            in2 >> again;
            if (again.ToIdentifier() != once) std::abort();
        }
    }

    std::uint32_t a = 0;
    std::uint32_t b = 0;
    std::memcpy(&a, data, size < 4 ? size : 4);
    if (size > 4) std::memcpy(&b, data + 4, size < 8 ? size - 4 : 4);
    for (std::uint32_t packedType : {kOxEventMotion, kOxEventKeyDown, kOxEventKeyUp}) {
        oxapp::detail::CKvwEvent packed(a, b, packedType);
        const OxKvwMotion& p = packed.motion;
        if (packedType == kOxEventMotion &&
            !(InRange(p.tx, 11) && InRange(-p.tz, 11) && InRange(p.ty, 10) && InRange(p.rx, 11) &&
              InRange(-p.rz, 11) && InRange(p.ry, 10))) {
            std::abort();
        }
        if (packedType == kOxEventKeyDown && p.pressed != (1u << (a & 31))) std::abort();
    }
    return 0;
}
