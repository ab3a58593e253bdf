// CLCDGfxBase: the off-screen surface a page draws into, and the drawing operations the
// widgets use. The colour surface is 320 x 240 at 32 bits a pixel, the mono one 160 x 43 at
// 8 bits a pixel. Win32 draws with GDI into a DIB section; the native build keeps a plain
// pixel buffer (rectangles only), and tests put in a recorder.
#pragma once

#include "lcd/widgets/lcd_geometry.h"
#include "lcd/widgets/lm_lcd_api.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace qvx::lcd {

/// A picture a bitmap widget draws: the platform's bitmap handle, owned elsewhere.
using LcdBitmapHandle = void*;
/// An icon a widget draws: the platform's icon handle, owned elsewhere.
using LcdIconHandle = void*;

class CLCDGfxBase {
public:
    CLCDGfxBase(int width, int height, int bitsPerPixel)
        : m_width(width), m_height(height), m_bitsPerPixel(bitsPerPixel) {}
    CLCDGfxBase(const CLCDGfxBase&) = delete;
    CLCDGfxBase& operator=(const CLCDGfxBase&) = delete;
    virtual ~CLCDGfxBase() = default;

    /// Makes the surface; false when the system refused.
    virtual bool Initialize() = 0;
    virtual void Shutdown() = 0;
    /// Starts a frame: the surface is cleared to black and the offset is zero.
    virtual bool BeginDraw() = 0;
    /// Ends the frame; the pixels are then complete.
    virtual void EndDraw() = 0;
    /// The finished frame in the library's format, or null before Initialize.
    virtual const LmBitmapHeader* Bitmap() const = 0;

    virtual void FillRect(const LcdRect& rect, LcdColor color) = 0;
    /// A one-pixel frame just inside `rect`.
    virtual void FrameRect(const LcdRect& rect, LcdColor color) = 0;
    /// A horizontal dotted line from x0 to x1 (exclusive) at y.
    virtual void DottedLine(int x0, int x1, int y, LcdColor color) = 0;
    /// The extent of `text` laid out `width` wide with `format` (word breaks need the width).
    virtual LcdSize MeasureText(const LcdFont& font, std::wstring_view text, unsigned format,
                                int width) = 0;
    /// Draws `text` in `box`, showing only what falls within `clip`.
    virtual void PaintText(const LcdFont& font, std::wstring_view text, unsigned format,
                           const LcdRect& box, const LcdRect& clip, LcdColor color,
                           LcdColor background, int backgroundMode) = 0;
    /// Copies the bitmap's part from `source` onward into `rect`, with per-pixel alpha when
    /// `alpha` is set (a 32-bit bitmap with premultiplied colours).
    virtual void DrawBitmap(LcdBitmapHandle bitmap, const LcdRect& rect, LcdPoint source,
                            bool alpha) = 0;
    virtual void DrawIcon(LcdIconHandle icon, const LcdRect& rect) = 0;

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    int BitsPerPixel() const { return m_bitsPerPixel; }

    /// Where the collection being drawn sits on the surface; operations add it.
    LcdPoint Offset() const { return m_offset; }
    void SetOffset(LcdPoint offset) { m_offset = offset; }

protected:
    LcdRect Shifted(const LcdRect& r) const {
        return {r.left + m_offset.x, r.top + m_offset.y, r.right + m_offset.x,
                r.bottom + m_offset.y};
    }

private:
    int m_width;
    int m_height;
    int m_bitsPerPixel;
    LcdPoint m_offset;
};

/// The platform's colour surface (320 x 240 x 32) and mono surface (160 x 43 x 8).
std::unique_ptr<CLCDGfxBase> CreateColorGfx();
std::unique_ptr<CLCDGfxBase> CreateMonoGfx();

/// Moves the drawing offset by `by` for a scope.
class COffsetScope {
public:
    COffsetScope(CLCDGfxBase& gfx, LcdPoint by) : m_gfx(gfx), m_saved(gfx.Offset()) {
        gfx.SetOffset({m_saved.x + by.x, m_saved.y + by.y});
    }
    COffsetScope(const COffsetScope&) = delete;
    COffsetScope& operator=(const COffsetScope&) = delete;
    ~COffsetScope() { m_gfx.SetOffset(m_saved); }

private:
    CLCDGfxBase& m_gfx;
    LcdPoint m_saved;
};

}  // namespace qvx::lcd
