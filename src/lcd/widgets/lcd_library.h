// ILcdLibrary: the operations of the LCD client library that the widgets and the connection
// call. The connection library implements it over the loaded table; tests implement it in
// memory. Every operation returns the library's status, 0 for success.
#pragma once

#include "lcd/widgets/lm_lcd_api.h"

#include <cstdint>

namespace qvx::lcd {

class ILcdLibrary {
public:
    virtual std::uint32_t Init() = 0;
    virtual std::uint32_t DeInit() = 0;
    virtual std::uint32_t Connect(LmConnectContext& context) = 0;
    virtual std::uint32_t Disconnect(std::int32_t connection) = 0;
    virtual std::uint32_t Open(LmOpenContext& context) = 0;
    virtual std::uint32_t OpenByType(LmOpenContext& context) = 0;
    virtual std::uint32_t Close(std::int32_t device) = 0;
    virtual std::uint32_t UpdateBitmap(std::int32_t device, const LmBitmapHeader& bitmap,
                                       std::uint32_t priority) = 0;
    virtual std::uint32_t SetAsForeground(std::int32_t device, bool foreground) = 0;
    virtual std::uint32_t RequestDevice(std::int32_t device) = 0;

protected:
    ~ILcdLibrary() = default;
};

}  // namespace qvx::lcd
