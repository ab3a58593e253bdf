// CSmartDeviceImpl: the public half of a device object. It offers the services and signal
// groups that consumers use, and turns the transport half's events into signals. It reaches
// the transport half (IClient, ICfg, IReflexion, IUI) through the complete object, which
// derives from both halves.
#pragma once

#include "client/detail/base_device.h"
#include "client/detail/client_interfaces.h"
#include "client/detail/signal_groups.h"
#include "client/oxapp/device_interfaces.h"

#include <cstdint>
#include <map>

namespace oxapp::detail {

/// ICommand's one operation: open the driver's user interface.
class CCommandImpl : public ICommand {
public:
    bool ShowUi() override;

protected:
    ~CCommandImpl() = default;
};

class CSmartDeviceImpl : public IAppcfg,
                         public ISensor,
                         public IKeyboard,
                         public IInfo,
                         public CAppcfgSignals,
                         public CAppcmdSignals,
                         public CSensorSignals,
                         public CKeyboardSignals,
                         public CCommandImpl,
                         public CBaseDevice {
public:
    // IAppcfg
    bool WriteActionImages(const oxImage_t* images, std::uint32_t count) override;
    bool WriteActions(const oxActionNodeEx_s* root) override;
    bool ActivateActionSet(const char* id) override;
    bool GetValue(const char* key, char* buffer, std::uint32_t* size) override;
    bool SetValue(const char* key, const char* value) override;
    // ISensor
    void GetValues(double out[6]) override;
    bool SetGrabMode(std::int32_t mode) override;
    // IKeyboard
    bool GetKeyState(std::uint32_t key) override;
    bool GetKeyState2(std::uint32_t key) override;
    bool InjectKeyDown(std::uint32_t key) override;
    bool InjectKeyUp(std::uint32_t key) override;
    // IInfo
    bool GetInfo(OxVersionInfo* record) override;

    // Events from the transport half.
    void OnKey(OxHandle handle, std::uint32_t key, bool pressed) override;
    void OnMotion(OxHandle handle, const float values[6]) override;
    void OnValueChanged(OxHandle handle) override;
    void OnCommand(OxHandle handle, const char* command, bool pressed) override;
    void OnCommandEx(OxHandle handle, std::uint32_t id, bool pressed, const void* blockA,
                     const void* blockB) override;

protected:
    ~CSmartDeviceImpl() override = default;

    /// A service of the transport half; null while the object is not complete.
    template <typename T>
    T* Transport() {
        return dynamic_cast<T*>(static_cast<CBaseDevice*>(this));
    }

private:
    double m_sensor[6] = {};
    std::map<std::uint32_t, bool> m_keys;
};

}  // namespace oxapp::detail
