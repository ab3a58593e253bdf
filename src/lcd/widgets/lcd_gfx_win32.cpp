// The panel surfaces on Win32: a DIB section of the panel's size and depth, selected into a
// memory device context, drawn with plain GDI. The mono surface has a grey palette, so that
// a pixel's byte is its brightness.
#include "lcd/widgets/lcd_gfx.h"

#include "lcd/widgets/gdi_handles_win32.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace qvx::lcd {
namespace {

RECT ToRect(const LcdRect& r) { return {r.left, r.top, r.right, r.bottom}; }

class CLCDGfxDib : public CLCDGfxBase {
public:
    CLCDGfxDib(int width, int height, int bits, LmBitmapHeader* frame, std::uint8_t* framePixels)
        : CLCDGfxBase(width, height, bits), m_frame(frame), m_framePixels(framePixels) {}
    ~CLCDGfxDib() override { Shutdown(); }

    bool Initialize() override {
        if (m_dc) return true;
        m_dc.Reset(CreateCompatibleDC(nullptr));
        if (!m_dc) return false;
        struct {
            BITMAPINFOHEADER header;
            RGBQUAD colors[256];
        } info{};
        info.header.biSize = sizeof(BITMAPINFOHEADER);
        info.header.biWidth = Width();
        info.header.biHeight = -Height();  // rows top down, as the library wants them
        info.header.biPlanes = 1;
        info.header.biBitCount = static_cast<WORD>(BitsPerPixel());
        info.header.biCompression = BI_RGB;
        if (BitsPerPixel() == 8) {
            info.header.biClrUsed = 256;
            for (int i = 0; i < 256; ++i) {
                info.colors[i] = {static_cast<BYTE>(i), static_cast<BYTE>(i), static_cast<BYTE>(i),
                                  0};
            }
        }
        void* bits = nullptr;
        m_bitmap.Reset(CreateDIBSection(m_dc.Get(), reinterpret_cast<BITMAPINFO*>(&info),
                                        DIB_RGB_COLORS, &bits, nullptr, 0));
        if (!m_bitmap || !bits) {
            Shutdown();
            return false;
        }
        m_bits = static_cast<std::uint8_t*>(bits);
        m_previous = SelectObject(m_dc.Get(), m_bitmap.Get());
        return true;
    }

    void Shutdown() override {
        if (m_dc && m_previous) SelectObject(m_dc.Get(), m_previous);
        m_previous = nullptr;
        m_fonts.clear();
        m_bitmap.Reset();
        m_dc.Reset();
        m_bits = nullptr;
    }

    bool BeginDraw() override {
        if (!m_bits) return false;
        std::memset(m_bits, 0, FrameBytes());
        SetOffset({});
        return true;
    }

    void EndDraw() override {
        GdiFlush();
        std::memcpy(m_framePixels, m_bits, FrameBytes());
    }

    const LmBitmapHeader* Bitmap() const override { return m_bits ? m_frame : nullptr; }

    void FillRect(const LcdRect& rect, LcdColor color) override {
        RECT r = ToRect(Shifted(rect));
        CGdiObject brush(CreateSolidBrush(color));
        ::FillRect(m_dc.Get(), &r, static_cast<HBRUSH>(brush.Get()));
    }

    void FrameRect(const LcdRect& rect, LcdColor color) override {
        RECT r = ToRect(Shifted(rect));
        CGdiObject brush(CreateSolidBrush(color));
        ::FrameRect(m_dc.Get(), &r, static_cast<HBRUSH>(brush.Get()));
    }

    void DottedLine(int x0, int x1, int y, LcdColor color) override {
        CGdiObject pen(CreatePen(PS_DOT, 1, color));
        CSelection selected(m_dc.Get(), pen.Get());
        LcdPoint at = Offset();
        MoveToEx(m_dc.Get(), x0 + at.x, y + at.y, nullptr);
        LineTo(m_dc.Get(), x1 + at.x, y + at.y);
    }

    LcdSize MeasureText(const LcdFont& font, std::wstring_view text, unsigned format,
                        int width) override {
        CSelection selected(m_dc.Get(), Font(font));
        RECT r{0, 0, width, 0};
        DrawTextExW(m_dc.Get(), const_cast<wchar_t*>(text.data()), static_cast<int>(text.size()),
                    &r, format | DT_CALCRECT, nullptr);
        return {r.right - r.left, r.bottom - r.top};
    }

    void PaintText(const LcdFont& font, std::wstring_view text, unsigned format, const LcdRect& box,
                   const LcdRect& clip, LcdColor color, LcdColor background,
                   int backgroundMode) override {
        HDC dc = m_dc.Get();
        int saved = SaveDC(dc);
        RECT c = ToRect(Shifted(clip));
        IntersectClipRect(dc, c.left, c.top, c.right, c.bottom);
        SetMapMode(dc, MM_TEXT);
        SetBkMode(dc, backgroundMode);
        SetBkColor(dc, background);
        SetTextColor(dc, color);
        SelectObject(dc, Font(font));
        RECT r = ToRect(Shifted(box));
        DrawTextExW(dc, const_cast<wchar_t*>(text.data()), static_cast<int>(text.size()), &r,
                    format, nullptr);
        RestoreDC(dc, saved);
    }

    void DrawBitmap(LcdBitmapHandle bitmap, const LcdRect& rect, LcdPoint source,
                    bool alpha) override {
        BITMAP info{};
        if (!GetObjectW(static_cast<HBITMAP>(bitmap), sizeof(info), &info)) return;
        LcdRect r = Shifted(rect);
        int width = std::min(r.Width(), static_cast<int>(info.bmWidth) - source.x);
        int height = std::min(r.Height(), static_cast<int>(info.bmHeight) - source.y);
        if (width <= 0 || height <= 0) return;
        CMemoryDc from(CreateCompatibleDC(m_dc.Get()));
        if (!from) return;
        CSelection selected(from.Get(), bitmap);
        if (alpha) {
            BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
            AlphaBlend(m_dc.Get(), r.left, r.top, width, height, from.Get(), source.x, source.y,
                       width, height, blend);
        } else {
            BitBlt(m_dc.Get(), r.left, r.top, width, height, from.Get(), source.x, source.y,
                   SRCCOPY);
        }
    }

    void DrawIcon(LcdIconHandle icon, const LcdRect& rect) override {
        LcdRect r = Shifted(rect);
        DrawIconEx(m_dc.Get(), r.left, r.top, static_cast<HICON>(icon), r.Width(), r.Height(), 0,
                   nullptr, DI_NORMAL);
    }

private:
    std::size_t FrameBytes() const {
        return static_cast<std::size_t>(Width()) * Height() * (BitsPerPixel() / 8);
    }

    /// The font for `spec`, made on first use and kept for the surface's life.
    HGDIOBJ Font(const LcdFont& spec) {
        for (const auto& [held, font] : m_fonts) {
            if (held == spec) return font.Get();
        }
        HFONT font = CreateFontW(spec.height, 0, 0, 0, spec.weight, FALSE, FALSE, FALSE,
                                 DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                 DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, spec.face.c_str());
        m_fonts.emplace_back(spec, CGdiObject(font));
        return font;
    }

    LmBitmapHeader* m_frame;
    std::uint8_t* m_framePixels;
    CMemoryDc m_dc;
    CGdiObject m_bitmap;
    HGDIOBJ m_previous = nullptr;
    std::uint8_t* m_bits = nullptr;
    std::vector<std::pair<LcdFont, CGdiObject>> m_fonts;
};

/// The colour panel: 320 x 240, 32 bits a pixel.
class CLCDGfxColor : public CLCDGfxDib {
public:
    CLCDGfxColor() : CLCDGfxDib(kColorWidth, kColorHeight, 32, &m_bitmap.header, m_bitmap.pixels) {
        m_bitmap.header.format = kLmBitmapColor;
    }

private:
    LmBitmapColor m_bitmap{};
};

/// The mono panel: 160 x 43, 8 bits a pixel.
class CLCDGfxMono : public CLCDGfxDib {
public:
    CLCDGfxMono() : CLCDGfxDib(kMonoWidth, kMonoHeight, 8, &m_bitmap.header, m_bitmap.pixels) {
        m_bitmap.header.format = kLmBitmapMono;
    }

private:
    LmBitmapMono m_bitmap{};
};

}  // namespace

std::unique_ptr<CLCDGfxBase> CreateColorGfx() { return std::make_unique<CLCDGfxColor>(); }
std::unique_ptr<CLCDGfxBase> CreateMonoGfx() { return std::make_unique<CLCDGfxMono>(); }

}  // namespace qvx::lcd
