#include "lcd/lcd_event_ring.h"

#include <algorithm>

namespace qvx::lcd {

void CLcdEventRing::Grow() {
    std::size_t old = m_slots.size();
    std::size_t wanted = std::min(kMaxCapacity, old + std::max<std::size_t>(old / 2, 8));
    // Unroll the ring into the new storage, oldest first.
    std::vector<LcdEvent> grown(wanted);
    for (std::size_t i = 0; i < m_size; ++i) grown[i] = m_slots[(m_head + i) % old];
    m_slots.swap(grown);
    m_head = 0;
}

bool CLcdEventRing::Push(const LcdEvent& event) {
    if (m_size == m_slots.size()) {
        if (m_slots.size() >= kMaxCapacity) return false;
        Grow();
    }
    m_slots[(m_head + m_size) % m_slots.size()] = event;
    ++m_size;
    return true;
}

bool CLcdEventRing::Pop(LcdEvent& event) {
    if (m_size == 0) return false;
    event = m_slots[m_head];
    m_head = (m_head + 1) % m_slots.size();
    --m_size;
    return true;
}

}  // namespace qvx::lcd
