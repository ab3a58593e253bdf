#include "client/oxapp/device_factory.h"

#include "client/detail/device_factory_platform.h"
#include "support/boundary.h"

namespace oxapp {

namespace {

std::function<ovk::interface_ptr<ovk::IObject>(std::uint32_t)>& TestFactory() {
    static std::function<ovk::interface_ptr<ovk::IObject>(std::uint32_t)> factory;
    return factory;
}

}  // namespace

ovk::interface_ptr<ovk::IObject> CreateSmartDevice(std::uint32_t flags) {
    return qvx::CallAtBoundary("oxapp::CreateSmartDevice", ovk::interface_ptr<ovk::IObject>(), [&] {
        if (TestFactory()) return TestFactory()(flags);
        return CreatePlatformDevice(flags);
    });
}

void SetDeviceFactoryForTest(std::function<ovk::interface_ptr<ovk::IObject>(std::uint32_t)> maker) {
    TestFactory() = std::move(maker);
}

}  // namespace oxapp
