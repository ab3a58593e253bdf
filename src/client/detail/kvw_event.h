// The client's own form of the driver's event record: constructors for the events the client
// makes itself, and the type as the dispatcher sees it.
#pragma once

#include "client/oxapp/ox_records.h"

#include <cstdint>

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
