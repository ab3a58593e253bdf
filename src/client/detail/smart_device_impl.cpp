#include "client/detail/smart_device_impl.h"

#include <cstring>
#include <string>

namespace oxapp::detail {

bool CCommandImpl::ShowUi() {
    auto* ui = dynamic_cast<IUI*>(this);
    return ui && ui->SetUiMode(-1);
}

// The driver's library may throw through the shim's wrappers; the caller gets false instead.
bool CSmartDeviceImpl::WriteActionImages(const oxImage_t* images, std::uint32_t count) {
    try {
        auto* cfg = Transport<ICfg>();
        return cfg && cfg->WriteActionImages(images, count);
    } catch (...) {
        return false;
    }
}

bool CSmartDeviceImpl::WriteActions(const oxActionNodeEx_s* root) {
    try {
        auto* cfg = Transport<ICfg>();
        return cfg && cfg->WriteActions(root);
    } catch (...) {
        return false;
    }
}

bool CSmartDeviceImpl::ActivateActionSet(const char* id) {
    try {
        auto* cfg = Transport<ICfg>();
        return cfg && cfg->ActivateActionSet(id);
    } catch (...) {
        return false;
    }
}

bool CSmartDeviceImpl::GetValue(const char* key, char* buffer, std::uint32_t* size) {
    if (!size) return false;
    auto* cfg = Transport<ICfg>();
    if (!cfg) return false;
    std::string value;
    bool result = cfg->GetValue(key, value);
    if (*size > value.size() && buffer) {
        std::memcpy(buffer, value.c_str(), value.size() + 1);
        return result;
    }
    *size = static_cast<std::uint32_t>(value.size() + 1);
    return false;
}

bool CSmartDeviceImpl::SetValue(const char* key, const char* value) {
    auto* cfg = Transport<ICfg>();
    return cfg && cfg->SetValue(key, value);
}

void CSmartDeviceImpl::GetValues(double out[6]) {
    for (int i = 0; i < 6; ++i) out[i] = m_sensor[i];
}

bool CSmartDeviceImpl::SetGrabMode(std::int32_t mode) {
    auto* client = Transport<IClient>();
    if (!client) return false;
    if (mode == 1) return client->GrabDevice(false);
    if (mode == 2) return client->GrabDevice(true);
    return client->ReleaseDevice();
}

bool CSmartDeviceImpl::GetKeyState(std::uint32_t key) {
    auto it = m_keys.find(key);
    return it == m_keys.end() ? true : it->second;
}

bool CSmartDeviceImpl::GetKeyState2(std::uint32_t key) { return GetKeyState(key); }

bool CSmartDeviceImpl::InjectKeyDown(std::uint32_t key) {
    auto* reflexion = Transport<IReflexion>();
    return reflexion && reflexion->InjectKeyDown(key);
}

bool CSmartDeviceImpl::InjectKeyUp(std::uint32_t key) {
    auto* reflexion = Transport<IReflexion>();
    return reflexion && reflexion->InjectKeyUp(key);
}

bool CSmartDeviceImpl::GetInfo(OxVersionInfo* record) {
    auto* client = Transport<IClient>();
    if (!record || !client) return false;
    // The library's version is asked first and then thrown away: the caller sees the
    // driver's.
    std::memset(record, 0, sizeof(*record));
    client->GetLibraryInfo(record);
    std::memset(record, 0, sizeof(*record));
    return client->GetDriverInfo(record);
}

void CSmartDeviceImpl::OnKey(OxHandle, std::uint32_t key, bool pressed) {
    m_keys[key] = pressed;
    FireKey(key, pressed);
}

void CSmartDeviceImpl::OnMotion(OxHandle, const float values[6]) {
    for (int i = 0; i < 6; ++i) m_sensor[i] = values[i];
    // A slot reads the values through GetValues.
    if (!IsActive()) FireMotion();
}

void CSmartDeviceImpl::OnValueChanged(OxHandle) { FireValueChanged(); }

void CSmartDeviceImpl::OnCommand(OxHandle, const char* command, bool pressed) {
    FireCommand(command, pressed);
}

void CSmartDeviceImpl::OnCommandEx(OxHandle, std::uint32_t id, bool pressed, const void* blockA,
                                   const void* blockB) {
    FireCommandEx(id, pressed, blockA, blockB);
}

}  // namespace oxapp::detail
