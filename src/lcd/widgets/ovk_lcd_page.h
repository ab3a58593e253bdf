// COvkLcdPage: a page of the applet library, of the colour (320 x 240) or the mono (160 x 43)
// panel. Its CreateText makes a one-size text whose object height follows the point size
// asked for.
#pragma once

#include "lcd/widgets/lcd_page.h"
#include "lcd/widgets/lm_lcd_api.h"

namespace qvx::lcd {

class COvkLcdPage : public CEzLcdPage {
public:
    /// The page's panel: kLmDeviceColor or kLmDeviceMono.
    std::int32_t DeviceType() const { return IsColor() ? kLmDeviceColor : kLmDeviceMono; }

    /// A text of `points` points, `width` pixels wide and `lines` lines high, ending in an
    /// ellipsis when it does not fit.
    CLCDText* CreateText(int points, int width, int weight, int lines);
    /// A picture object of the given size, without transparency.
    CLCDBitmap* CreateBitmap(int width, int height) { return AddBitmap(width, height); }

protected:
    COvkLcdPage(bool color, int width, int height) : CEzLcdPage(color, width, height) {}
};

class COvkColorLcdPageImpl : public COvkLcdPage {
public:
    COvkColorLcdPageImpl() : COvkLcdPage(true, kColorWidth, kColorHeight) {}
};

class COvkMonoLcdPageImpl : public COvkLcdPage {
public:
    COvkMonoLcdPageImpl() : COvkLcdPage(false, kMonoWidth, kMonoHeight) {}
};

}  // namespace qvx::lcd
