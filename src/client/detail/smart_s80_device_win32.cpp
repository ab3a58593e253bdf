#include "client/detail/smart_s80_device_win32.h"

#include "support/boundary.h"

namespace oxapp {

CSmartS80Device::CSmartS80Device(std::uint32_t flags, const std::string& appName)
    : detail::CS80ClientImpl(appName) {
    Create(nullptr, flags | kFlagSyncState);
}

CSmartS80Device::~CSmartS80Device() {
    qvx::CallAtBoundary("CSmartS80Device::~CSmartS80Device",
                        [&] { static_cast<detail::IClient*>(this)->Close(); });
}

}  // namespace oxapp
