// Pictures from the module's resources. Blending wants 32-bit pictures whose colours are
// already multiplied by their alpha, so sections are prepared for that once, when loaded.
#include "lcd/page_resources.h"

#include "lcd/widgets/gdi_handles_win32.h"
#include "support/own_module_win32.h"

#include <cstring>

namespace qvx::lcd {
namespace {

void DeleteGdiObject(void* handle) { DeleteObject(static_cast<HGDIOBJ>(handle)); }
void DeleteIcon(void* handle) { DestroyIcon(static_cast<HICON>(handle)); }

void PremultiplyBgra(std::uint8_t* pixels, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i, pixels += 4) {
        unsigned alpha = pixels[3];
        for (int c = 0; c < 3; ++c) pixels[c] = static_cast<std::uint8_t>(pixels[c] * alpha / 255);
    }
}

CLcdPicture Picture(CGdiObject bitmap, LcdSize size, int bits) {
    return {bitmap.Take(), &DeleteGdiObject, size, bits};
}

/// A 32-bit copy of `source` with `alpha` throughout, premultiplied.
CLcdPicture WithUniformAlpha(HBITMAP source, LcdSize size, std::uint8_t alpha) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = -size.cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    CGdiObject copy(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    CMemoryDc to(CreateCompatibleDC(nullptr));
    CMemoryDc from(CreateCompatibleDC(nullptr));
    if (!copy || !bits || !to || !from) return {};
    {
        CSelection target(to.Get(), copy.Get());
        CSelection origin(from.Get(), source);
        BitBlt(to.Get(), 0, 0, size.cx, size.cy, from.Get(), 0, 0, SRCCOPY);
    }
    GdiFlush();
    auto* pixels = static_cast<std::uint8_t*>(bits);
    std::size_t count = static_cast<std::size_t>(size.cx) * size.cy;
    for (std::size_t i = 0; i < count; ++i) pixels[i * 4 + 3] = alpha;
    PremultiplyBgra(pixels, count);
    return Picture(std::move(copy), size, 32);
}

class CModulePageResources : public IPageResources {
public:
    CLcdPicture LoadPlainBitmap(int id) override {
        CGdiObject bitmap(LoadBitmapW(OwnModule(), MAKEINTRESOURCEW(id)));
        BITMAP info{};
        if (!bitmap || !GetObjectW(bitmap.Get(), sizeof info, &info)) return {};
        return Picture(std::move(bitmap), {info.bmWidth, info.bmHeight}, info.bmBitsPixel);
    }

    CLcdPicture LoadSectionBitmap(int id, std::optional<std::uint8_t> opaqueAlpha) override {
        CGdiObject bitmap(
            LoadImageW(OwnModule(), MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
        DIBSECTION section{};
        if (!bitmap || GetObjectW(bitmap.Get(), sizeof section, &section) != sizeof section) {
            return {};
        }
        LcdSize size{section.dsBm.bmWidth, section.dsBm.bmHeight};
        int bits = section.dsBm.bmBitsPixel;
        if (bits == 32 && section.dsBm.bmBits) {
            GdiFlush();
            PremultiplyBgra(static_cast<std::uint8_t*>(section.dsBm.bmBits),
                            static_cast<std::size_t>(size.cx) * size.cy);
            return Picture(std::move(bitmap), size, bits);
        }
        if (opaqueAlpha) {
            return WithUniformAlpha(static_cast<HBITMAP>(bitmap.Get()), size, *opaqueAlpha);
        }
        return Picture(std::move(bitmap), size, bits);
    }

    CLcdPicture LoadIconImage(int id) override {
        CIconHandle icon(static_cast<HICON>(
            LoadImageW(OwnModule(), MAKEINTRESOURCEW(id), IMAGE_ICON, 0, 0, LR_DEFAULTSIZE)));
        ICONINFO parts{};
        if (!icon || !GetIconInfo(icon.Get(), &parts)) return {};
        CGdiObject color(parts.hbmColor);
        CGdiObject mask(parts.hbmMask);
        BITMAP info{};
        if (!color || !GetObjectW(color.Get(), sizeof info, &info)) return {};
        return {icon.Take(), &DeleteIcon, {info.bmWidth, info.bmHeight}, info.bmBitsPixel};
    }
};

}  // namespace

IPageResources& SystemPageResources() {
    static CModulePageResources resources;
    return resources;
}

}  // namespace qvx::lcd
