// CLcdEventRing: the queue of what the LCD library reported, filled on the library's thread
// and emptied on the main thread (the owner locks around both). It is a ring that grows by
// half its capacity, by 8 at least, and up to 0xAAAAAAA records; records are stored in place
// and their slots reused, so a steady flow allocates nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qvx::lcd {

struct LcdEvent {
    std::uint32_t kind = 0;  ///< 2: a notification
    std::uint32_t code = 0;
    std::uint32_t param1 = 0;
    std::uint32_t param2 = 0;
    std::uint32_t spare1 = 0;
    std::uint32_t spare2 = 0;
};

constexpr std::uint32_t kLcdEventNotification = 2;

class CLcdEventRing {
public:
    static constexpr std::size_t kMaxCapacity = 0xAAAAAAA;

    /// Appends a record; false (the record dropped) only when the ring is at its limit.
    bool Push(const LcdEvent& event);
    /// Takes the oldest record; false when empty.
    bool Pop(LcdEvent& event);
    std::size_t Size() const { return m_size; }
    std::size_t Capacity() const { return m_slots.size(); }

private:
    void Grow();

    std::vector<LcdEvent> m_slots;
    std::size_t m_head = 0;  ///< the oldest record
    std::size_t m_size = 0;
};

}  // namespace qvx::lcd
