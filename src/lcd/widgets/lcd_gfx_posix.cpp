// The panel surfaces of the native build: a plain pixel buffer that takes rectangles and
// measures text by a fixed advance. Only the logic above it is tested natively; the real
// drawing is the Win32 build's.
#include "lcd/widgets/lcd_gfx.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace qvx::lcd {
namespace {

class CLCDGfxMemory : public CLCDGfxBase {
public:
    CLCDGfxMemory(int width, int height, int bits, std::uint32_t format)
        : CLCDGfxBase(width, height, bits) {
        m_frame.resize(sizeof(LmBitmapHeader) +
                       static_cast<std::size_t>(width) * height * (bits / 8));
        Header()->format = format;
    }

    bool Initialize() override { return true; }
    void Shutdown() override {}
    bool BeginDraw() override {
        std::fill(Pixels(), Pixels() + PixelBytes(), std::uint8_t{0});
        SetOffset({});
        return true;
    }
    void EndDraw() override {}
    const LmBitmapHeader* Bitmap() const override {
        return reinterpret_cast<const LmBitmapHeader*>(m_frame.data());
    }

    void FillRect(const LcdRect& rect, LcdColor color) override {
        LcdRect r = Intersect(Shifted(rect), {0, 0, Width(), Height()});
        for (int y = r.top; y < r.bottom; ++y) {
            for (int x = r.left; x < r.right; ++x) Put(x, y, color);
        }
    }
    void FrameRect(const LcdRect& rect, LcdColor color) override {
        LcdRect r = Shifted(rect);
        FillRect({r.left, r.top, r.right, r.top + 1}, color);
        FillRect({r.left, r.bottom - 1, r.right, r.bottom}, color);
        FillRect({r.left, r.top, r.left + 1, r.bottom}, color);
        FillRect({r.right - 1, r.top, r.right, r.bottom}, color);
    }
    void DottedLine(int x0, int x1, int y, LcdColor color) override {
        for (int x = x0; x < x1; x += 2) FillRect({x, y, x + 1, y + 1}, color);
    }
    LcdSize MeasureText(const LcdFont& font, std::wstring_view text, unsigned, int) override {
        int height = std::abs(font.height);
        return {static_cast<int>(text.size()) * height / 2, height};
    }
    void PaintText(const LcdFont&, std::wstring_view, unsigned, const LcdRect&, const LcdRect&,
                   LcdColor, LcdColor, int) override {}
    void DrawBitmap(LcdBitmapHandle, const LcdRect&, LcdPoint, bool) override {}
    void DrawIcon(LcdIconHandle, const LcdRect&) override {}

private:
    LmBitmapHeader* Header() { return reinterpret_cast<LmBitmapHeader*>(m_frame.data()); }
    std::uint8_t* Pixels() { return m_frame.data() + sizeof(LmBitmapHeader); }
    std::size_t PixelBytes() const { return m_frame.size() - sizeof(LmBitmapHeader); }
    void Put(int x, int y, LcdColor color) {
        std::uint8_t r = color & 0xFF, g = (color >> 8) & 0xFF, b = (color >> 16) & 0xFF;
        if (BitsPerPixel() == 8) {
            Pixels()[y * Width() + x] = static_cast<std::uint8_t>((r + g + b) / 3);
            return;
        }
        std::uint8_t* p = Pixels() + (static_cast<std::size_t>(y) * Width() + x) * 4;
        p[0] = b;
        p[1] = g;
        p[2] = r;
        p[3] = 0;
    }

    std::vector<std::uint8_t> m_frame;
};

}  // namespace

std::unique_ptr<CLCDGfxBase> CreateColorGfx() {
    return std::make_unique<CLCDGfxMemory>(kColorWidth, kColorHeight, 32, kLmBitmapColor);
}
std::unique_ptr<CLCDGfxBase> CreateMonoGfx() {
    return std::make_unique<CLCDGfxMemory>(kMonoWidth, kMonoHeight, 8, kLmBitmapMono);
}

}  // namespace qvx::lcd
