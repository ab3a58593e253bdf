// The platform's own device maker, behind CreateSmartDevice.
#pragma once

#include "client/ovk/interface_ptr.h"

#include <cstdint>

namespace oxapp {

ovk::interface_ptr<ovk::IObject> CreatePlatformDevice(std::uint32_t flags);

}  // namespace oxapp
