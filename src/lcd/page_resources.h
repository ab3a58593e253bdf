// The pictures a page shows, loaded from the plug-in's own resources: plain bitmaps, section
// bitmaps ready for blending, and icons. Each comes in a move-only owner that frees it, so
// that a page never holds a naked handle. Natively there are no resources: every load gives
// an empty picture, and tests put in their own.
#pragma once

#include "lcd/widgets/lcd_geometry.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace qvx::lcd {

/// A loaded picture or icon and its size; empty (null handle) when the load failed.
class CLcdPicture {
public:
    using Deleter = void (*)(void*);

    CLcdPicture() = default;
    CLcdPicture(void* handle, Deleter deleter, LcdSize size, int bitsPerPixel)
        : m_handle(handle, deleter), m_size(size), m_bitsPerPixel(bitsPerPixel) {}

    void* Get() const { return m_handle.get(); }
    explicit operator bool() const { return m_handle != nullptr; }
    LcdSize Size() const { return m_size; }
    int BitsPerPixel() const { return m_bitsPerPixel; }
    /// True when the picture carries premultiplied per-pixel alpha.
    bool HasAlpha() const { return m_handle && m_bitsPerPixel == 32; }

private:
    std::unique_ptr<void, Deleter> m_handle{nullptr, nullptr};
    LcdSize m_size;
    int m_bitsPerPixel = 0;
};

class IPageResources {
public:
    /// The bitmap `id` as the system loads it plainly.
    virtual CLcdPicture LoadPlainBitmap(int id) = 0;
    /// The bitmap `id` as a section. A 32-bit one gets its colours multiplied by its alpha;
    /// a shallower one is made 32-bit with `opaqueAlpha` throughout when that is given, and
    /// is kept as it is otherwise.
    virtual CLcdPicture LoadSectionBitmap(int id, std::optional<std::uint8_t> opaqueAlpha) = 0;
    /// The icon `id` at the system's icon size; its size is that of its colour bitmap.
    virtual CLcdPicture LoadIconImage(int id) = 0;

protected:
    ~IPageResources() = default;
};

/// The resources of the module this code is linked into.
IPageResources& SystemPageResources();

}  // namespace qvx::lcd
