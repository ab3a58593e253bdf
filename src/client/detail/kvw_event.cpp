#include "client/detail/kvw_event.h"

#include <cstring>

namespace oxapp::detail {
namespace {

/// The period of a zero event that the client makes.
constexpr std::int32_t kZeroEventPeriod = 16;

std::int32_t SignedField(std::uint32_t word, int shift, int bits) {
    std::uint32_t field = (word >> shift) & ((1u << bits) - 1);
    std::uint32_t sign = 1u << (bits - 1);
    return static_cast<std::int32_t>(field ^ sign) - static_cast<std::int32_t>(sign);
}

void ClearMotion(OxKvwEvent& event) {
    std::memset(&event.motion, 0, sizeof event.motion);
    event.motion.period = kZeroEventPeriod;
}

}  // namespace

CKvwEvent::CKvwEvent() : OxKvwEvent{} {
    type = kOxEventZeroMotion;
    ClearMotion(*this);
}

CKvwEvent::CKvwEvent(const OxKvwEvent& raw) : OxKvwEvent{} {
    std::memcpy(static_cast<OxKvwEvent*>(this), &raw, sizeof(OxKvwEvent));
}

CKvwEvent::CKvwEvent(std::uint32_t a, std::uint32_t b, std::uint32_t eventType) : OxKvwEvent{} {
    type = eventType;
    ClearMotion(*this);
    if (eventType == kOxEventMotion) {
        motion.tx = SignedField(a, 0, 11);
        motion.tz = -SignedField(a, 11, 11);
        motion.ty = SignedField(a, 22, 10);
        motion.rx = SignedField(b, 0, 11);
        motion.rz = -SignedField(b, 11, 11);
        motion.ry = SignedField(b, 22, 10);
    } else if (eventType == kOxEventKeyDown) {
        motion.pressed = 1u << (a & 31);
    } else if (eventType == kOxEventKeyUp) {
        motion.released = 1u << (a & 31);
    }
}

std::uint32_t CKvwEvent::NormalisedType() const {
    if (type == kOxEventMotion && motion.tx == 0 && motion.ty == 0 && motion.tz == 0 &&
        motion.rx == 0 && motion.ry == 0 && motion.rz == 0) {
        return kOxEventZeroMotion;
    }
    return type;
}

}  // namespace oxapp::detail
