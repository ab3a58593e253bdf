// CLCDBitmap draws a picture, plain or with its per-pixel alpha; CLCDIcon draws an icon. Both
// show their logical window onto the picture; neither owns what it shows, and neither draws
// anything without it.
#pragma once

#include "lcd/widgets/lcd_base.h"
#include "lcd/widgets/lcd_gfx.h"

namespace qvx::lcd {

class CLCDBitmap : public CLCDBase {
public:
    void SetBitmap(LcdBitmapHandle bitmap) { m_bitmap = bitmap; }
    LcdBitmapHandle GetBitmap() const { return m_bitmap; }
    /// With alpha the picture must be 32 bits a pixel with premultiplied colours.
    void SetAlpha(bool alpha) { m_alpha = alpha; }
    bool HasAlpha() const { return m_alpha; }
    void OnDraw(CLCDGfxBase& gfx) override;

private:
    LcdBitmapHandle m_bitmap = nullptr;
    bool m_alpha = false;
};

class CLCDIcon : public CLCDBase {
public:
    void SetIcon(LcdIconHandle icon) { m_icon = icon; }
    LcdIconHandle GetIcon() const { return m_icon; }
    void OnDraw(CLCDGfxBase& gfx) override;

private:
    LcdIconHandle m_icon = nullptr;
};

}  // namespace qvx::lcd
