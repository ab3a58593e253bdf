// Making the device object through which the plug-in reaches the driver. On Windows it is a
// CSmartS80Device; where there is no driver library (the native build) the device comes from
// whatever a test installed, and there is none otherwise.
#pragma once

#include "client/ovk/interface_ptr.h"

#include <cstdint>
#include <functional>

namespace oxapp {

/// A new device object opened with `flags`; empty when none can be made.
ovk::interface_ptr<ovk::IObject> CreateSmartDevice(std::uint32_t flags);

/// Replaces the device maker, for tests; an empty function restores the normal one.
void SetDeviceFactoryForTest(std::function<ovk::interface_ptr<ovk::IObject>(std::uint32_t)> maker);

}  // namespace oxapp
