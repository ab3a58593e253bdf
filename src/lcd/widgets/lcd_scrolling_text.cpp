#include "lcd/widgets/lcd_scrolling_text.h"

#include "lcd/widgets/lcd_gfx.h"
#include "support/main_loop.h"

#include <algorithm>
#include <cmath>

namespace qvx::lcd {

CLCDScrollingText::CLCDScrollingText(TickSource ticks) : m_ticks(std::move(ticks)) {
    if (!m_ticks) {
        m_ticks = [] { return static_cast<std::uint32_t>(qvx::MainLoop().NowMs()); };
    }
    ResetUpdate();
}

void CLCDScrollingText::SetScrollDirection(int direction) {
    m_direction = direction == kVertical ? kVertical : kHorizontal;
    if (m_direction == kVertical) SetWordWrap(true);
}

void CLCDScrollingText::SetText(const std::wstring& text) {
    if (text == GetText()) return;
    ResetUpdate();
    CLCDText::SetText(text);
}

void CLCDScrollingText::ResetUpdate() {
    m_elapsed = 0;
    m_now = m_ticks();
    m_stateStart = m_now;
    m_lastDraw = m_now;
    m_state = kWaitStart;
    m_position = 0;
    m_distance = -1;
    SetLogicalOrigin(0, 0);
}

void CLCDScrollingText::OnUpdate(std::uint32_t tick) {
    m_now = tick;
    m_elapsed = tick - m_lastDraw;
}

void CLCDScrollingText::Advance(std::uint32_t now) {
    switch (m_state) {
        case kWaitStart:
            if (now - m_stateStart <= m_startDelay) break;
            m_state = kScrolling;
            m_lastDraw = now;
            [[fallthrough]];
        case kScrolling: {
            m_position += m_speed * static_cast<double>(now - m_lastDraw) / 1000.0;
            int shown = std::min(static_cast<int>(std::lround(m_position)), m_distance);
            if (m_direction == kVertical) {
                SetLogicalOrigin(0, -shown);
            } else {
                SetLogicalOrigin(-shown, 0);
            }
            if (m_position >= m_distance) {
                m_state = kWaitEnd;
                m_stateStart = now;
            }
            break;
        }
        case kWaitEnd:
            if (now - m_stateStart <= m_endDelay) break;
            if (m_repeat) {
                ResetUpdate();
            } else {
                m_state = kDone;
            }
            break;
        case kDone:
            break;
    }
    m_lastDraw = now;
}

void CLCDScrollingText::OnDraw(CLCDGfxBase& gfx) {
    if (m_distance < 0) {
        // The first draw measures: the distance is what does not fit along the direction.
        CalculateExtent(gfx, true);
        int text = m_direction == kVertical ? GetVExtent() : GetHExtent();
        int room = m_direction == kVertical ? GetHeight() : GetWidth();
        m_distance = std::max(0, text - room);
        if (m_direction == kVertical) {
            SetLogicalSize(GetWidth(), GetVExtent());
        } else {
            SetLogicalSize(GetHExtent(), GetHeight());
        }
    }
    Advance(m_now);
    CLCDText::OnDraw(gfx);
}

}  // namespace qvx::lcd
