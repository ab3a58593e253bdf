// CLCDScrollingText: a text that waits, scrolls once across its object, waits again, and then
// stops or starts over. Time comes from an injected tick source, so the states can be driven
// by a test clock.
#pragma once

#include "lcd/widgets/lcd_text.h"

#include <cstdint>
#include <functional>

namespace qvx::lcd {

class CLCDScrollingText : public CLCDText {
public:
    enum State { kWaitStart = 0, kScrolling = 1, kWaitEnd = 2, kDone = 3 };
    enum Direction { kHorizontal = 0, kVertical = 1 };
    using TickSource = std::function<std::uint32_t()>;

    /// `ticks` gives the tick count in milliseconds; the default is the main loop's clock.
    explicit CLCDScrollingText(TickSource ticks = {});

    void SetStartDelay(std::uint32_t ms) { m_startDelay = ms; }
    void SetEndDelay(std::uint32_t ms) { m_endDelay = ms; }
    /// Pixels a second.
    void SetSpeed(double pixelsPerSecond) { m_speed = pixelsPerSecond; }
    /// Vertical scrolling also wraps words.
    void SetScrollDirection(int direction);
    void SetRepeat(bool repeat) { m_repeat = repeat; }

    void SetText(const std::wstring& text) override;
    void ResetUpdate() override;
    void OnUpdate(std::uint32_t tick) override;
    void OnDraw(CLCDGfxBase& gfx) override;

    State GetState() const { return m_state; }
    /// How far the text has to move; -1 until the first draw measured it.
    int GetDistance() const { return m_distance; }
    double GetPosition() const { return m_position; }

private:
    void Advance(std::uint32_t now);

    TickSource m_ticks;
    std::uint32_t m_startDelay = 0;
    std::uint32_t m_endDelay = 0;
    double m_speed = 0;
    int m_direction = kHorizontal;
    bool m_repeat = false;

    State m_state = kWaitStart;
    std::uint32_t m_stateStart = 0;  ///< tick at which the current state began
    std::uint32_t m_lastDraw = 0;    ///< tick of the last draw, for the scrolling step
    std::uint32_t m_elapsed = 0;     ///< time since the last draw, as of the last OnUpdate
    std::uint32_t m_now = 0;
    double m_position = 0;
    int m_distance = -1;
};

}  // namespace qvx::lcd
