#include "client/detail/device_factory_platform.h"
#include "client/detail/smart_s80_device_win32.h"

namespace oxapp {

ovk::interface_ptr<ovk::IObject> CreatePlatformDevice(std::uint32_t flags) {
    // The new object's first reference is adopted by the pointer.
    return ovk::interface_ptr<ovk::IObject>(static_cast<ovk::IObject*>(
        static_cast<detail::CSmartDeviceImpl*>(new CSmartS80Device(flags))));
}

}  // namespace oxapp
