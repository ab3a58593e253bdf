#include "client/detail/kvw_event.h"

#include <cstring>

namespace oxapp::detail {
namespace {

constexpr std::uint32_t kMotion = 2;
constexpr std::uint32_t kZeroMotion = 4;
constexpr std::uint32_t kKeyDown = 12;
constexpr std::uint32_t kKeyUp = 13;

std::int32_t SignedField(std::uint32_t word, int shift, int bits) {
    std::uint32_t field = (word >> shift) & ((1u << bits) - 1);
    std::uint32_t sign = 1u << (bits - 1);
    return static_cast<std::int32_t>(field ^ sign) - static_cast<std::int32_t>(sign);
}

void ClearMotion(OxKvwEvent& event) {
    std::memset(&event.motion, 0, sizeof event.motion);
    event.motion.period = 16;
}

}  // namespace

CKvwEvent::CKvwEvent() : OxKvwEvent{} {
    type = kZeroMotion;
    ClearMotion(*this);
}

CKvwEvent::CKvwEvent(const OxKvwEvent& raw) : OxKvwEvent{} {
    std::memcpy(static_cast<OxKvwEvent*>(this), &raw, sizeof(OxKvwEvent));
}

CKvwEvent::CKvwEvent(std::uint32_t a, std::uint32_t b, std::uint32_t eventType) : OxKvwEvent{} {
    type = eventType;
    ClearMotion(*this);
    if (eventType == kMotion) {
        motion.tx = SignedField(a, 0, 11);
        motion.tz = -SignedField(a, 11, 11);
        motion.ty = SignedField(a, 22, 10);
        motion.rx = SignedField(b, 0, 11);
        motion.rz = -SignedField(b, 11, 11);
        motion.ry = SignedField(b, 22, 10);
    } else if (eventType == kKeyDown) {
        motion.pressed = 1u << (a & 31);
    } else if (eventType == kKeyUp) {
        motion.released = 1u << (a & 31);
    }
}

std::uint32_t CKvwEvent::NormalisedType() const {
    if (type == kMotion && motion.tx == 0 && motion.ty == 0 && motion.tz == 0 && motion.rx == 0 &&
        motion.ry == 0 && motion.rz == 0) {
        return kZeroMotion;
    }
    return type;
}

}  // namespace oxapp::detail
