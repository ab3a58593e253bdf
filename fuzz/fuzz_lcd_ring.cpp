// Any bytes as a sequence of pushes and pops on the LCD event ring, checked against a plain
// double-ended queue: the ring must give back every record in order, however it wraps and grows.
#include "lcd/lcd_event_ring.h"

#include <cstdint>
#include <cstdlib>
#include <deque>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    qvx::lcd::CLcdEventRing ring;
    std::deque<std::uint32_t> model;
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < size; ++i) {
        // The low bit chooses, the next four how many times: bursts make the ring grow and wrap.
        unsigned times = ((data[i] >> 1) & 15u) + 1u;
        for (unsigned t = 0; t < times; ++t) {
            if (data[i] & 1) {
                qvx::lcd::LcdEvent event;
                event.code = next;
                event.param2 = ~next;
                if (!ring.Push(event)) std::abort();
                model.push_back(next++);
            } else {
                qvx::lcd::LcdEvent event;
                bool got = ring.Pop(event);
                if (got != !model.empty()) std::abort();
                if (got) {
                    if (event.code != model.front() || event.param2 != ~model.front()) std::abort();
                    model.pop_front();
                }
            }
            if (ring.Size() != model.size() || ring.Capacity() < ring.Size()) std::abort();
        }
    }
    return 0;
}
