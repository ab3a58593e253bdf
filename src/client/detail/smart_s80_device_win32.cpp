#include "client/detail/smart_s80_device_win32.h"

namespace oxapp {

CSmartS80Device::CSmartS80Device(std::uint32_t flags, const std::string& appName)
    : detail::CS80ClientImpl(appName) {
    Create(nullptr, flags | detail::kFlagSyncState);
}

CSmartS80Device::~CSmartS80Device() {
    try {
        static_cast<detail::IClient*>(this)->Close();
    } catch (...) {
    }
}

}  // namespace oxapp
