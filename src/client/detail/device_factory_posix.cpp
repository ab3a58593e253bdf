#include "client/detail/device_factory_platform.h"

namespace oxapp {

// No driver library exists in the native build.
ovk::interface_ptr<ovk::IObject> CreatePlatformDevice(std::uint32_t) {
    return ovk::interface_ptr<ovk::IObject>();
}

}  // namespace oxapp
