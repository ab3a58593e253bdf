// CLCDBase: one object on a page: where it is, how big, whether it shows, and the logical
// window onto its content (the origin moves when content scrolls). Subclasses draw.
#pragma once

#include "lcd/widgets/lcd_geometry.h"

#include <cstdint>

namespace qvx::lcd {

class CLCDGfxBase;

class CLCDBase {
public:
    CLCDBase() = default;
    CLCDBase(const CLCDBase&) = delete;
    CLCDBase& operator=(const CLCDBase&) = delete;
    virtual ~CLCDBase() = default;

    virtual bool Initialize() { return true; }

    virtual void SetOrigin(int x, int y) { StoreOrigin({x, y}); }
    virtual void StoreOrigin(LcdPoint origin) { m_origin = origin; }
    LcdPoint GetOrigin() const { return m_origin; }
    virtual void SetSize(int width, int height) { StoreSize({width, height}); }
    virtual void StoreSize(LcdSize size) { m_size = size; }
    LcdSize GetSize() const { return m_size; }
    int GetWidth() const { return m_size.cx; }
    int GetHeight() const { return m_size.cy; }

    virtual void Show(bool visible) { m_visible = visible; }
    bool IsVisible() const { return m_visible; }
    virtual void SetInverted(bool inverted) { m_inverted = inverted; }
    bool IsInverted() const { return m_inverted; }
    /// Starts animated content over; nothing for still objects.
    virtual void ResetUpdate() {}

    void SetLogicalOrigin(int x, int y) { m_logicalOrigin = {x, y}; }
    void SetLogicalOrigin(LcdPoint p) { m_logicalOrigin = p; }
    LcdPoint GetLogicalOrigin() const { return m_logicalOrigin; }
    void SetLogicalSize(int width, int height) { m_logicalSize = {width, height}; }
    void SetLogicalSize(LcdSize s) { m_logicalSize = s; }
    LcdSize GetLogicalSize() const { return m_logicalSize; }

    void SetBackgroundMode(int mode) { m_backgroundMode = mode; }
    int GetBackgroundMode() const { return m_backgroundMode; }
    virtual void SetBackgroundColor(LcdColor color) { m_backgroundColor = color; }
    LcdColor GetBackgroundColor() const { return m_backgroundColor; }
    virtual void SetForegroundColor(LcdColor color) { m_foregroundColor = color; }
    LcdColor GetForegroundColor() const { return m_foregroundColor; }

    /// The time, in milliseconds of the tick count, before a frame is drawn.
    virtual void OnUpdate(std::uint32_t /*tick*/) {}
    virtual void OnDraw(CLCDGfxBase& gfx) = 0;

    /// The object's own rectangle, relative to its collection.
    LcdRect Bounds() const {
        return {m_origin.x, m_origin.y, m_origin.x + m_size.cx, m_origin.y + m_size.cy};
    }

private:
    LcdSize m_size;
    LcdPoint m_origin;
    bool m_visible = true;
    bool m_inverted = false;
    LcdPoint m_logicalOrigin;
    LcdSize m_logicalSize;
    int m_backgroundMode = kBackgroundTransparent;
    LcdColor m_backgroundColor = 0x000000;
    LcdColor m_foregroundColor = 0xFFFFFF;
};

}  // namespace qvx::lcd
