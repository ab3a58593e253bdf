// CSmartS80Device: the one object the plug-in sees of the driver. The public half
// (CSmartDeviceImpl) and the transport half (CS80ClientImpl) meet here; the object is made
// once with its flags and keeps its connection to the driver until it is destroyed.
#pragma once

#include "client/detail/s80_client_win32.h"
#include "client/detail/smart_device_impl.h"

#include <cstdint>
#include <string>

namespace oxapp {

class CSmartS80Device : public detail::CSmartDeviceImpl, public detail::CS80ClientImpl {
public:
    /// Creates the window (and so the connection) with `flags` | kFlagSyncState. Objects
    /// live on the heap only; hold them by ovk::interface_ptr.
    explicit CSmartS80Device(std::uint32_t flags, const std::string& appName = std::string());
    /// Closes the connection while the object is still whole.
    ~CSmartS80Device() override;

protected:
    detail::IClientEvents& ClientEvents() override { return *this; }
    detail::ISyncEvents& SyncEvents() override { return *this; }
    detail::ICfgEvents& CfgEvents() override { return *this; }
    detail::ICmdEvents& CmdEvents() override { return *this; }
};

}  // namespace oxapp
