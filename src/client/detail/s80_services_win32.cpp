// CS80ClientImpl: the operations that call the driver on the caller's behalf. Each needs a
// connection, tests for it first, and gives false when the driver's function failed.
#include "client/detail/s80_client_win32.h"

#include "client/detail/oxapp_shim.h"
#include "client/oxapp/virtual_key.h"
#include "support/os.h"

#include <cstring>
#include <map>

namespace oxapp::detail {

namespace {

/// The product of a device type word; 0 when the word is not a known device.
std::uint32_t ProductOfDeviceType(std::uint32_t type) {
    static const std::map<std::uint32_t, std::uint32_t> kProducts = {
        {29, 0x5101}, {6, 0x5102}, {4, 0x5103}, {5, 0x5104}, {0x5105, 0x5105}, {0x5106, 0x5106}};
    auto it = kProducts.find(type);
    return it == kProducts.end() ? 0 : it->second;
}

}  // namespace

bool CS80ClientImpl::GetProductId(std::uint32_t& pid) {
    std::uint32_t type = 0;
    if (!GetDeviceType(type)) return false;
    std::uint32_t product = ProductOfDeviceType(type);
    pid = product != 0 ? product : (type & 0xFFFF);
    return true;
}

bool CS80ClientImpl::ReadDeviceInfo(OxDeviceInfo& info) {
    return m_handle != 0 && OxGetDeviceInfo(m_handle, &info) == kOxNoError;
}

bool CS80ClientImpl::GetDeviceType(std::uint32_t& type) {
    OxDeviceInfo info{};
    if (!ReadDeviceInfo(info)) return false;
    type = info.deviceType;
    return true;
}

bool CS80ClientImpl::GetDriverInfo(OxVersionInfo* record) {
    return record && OxGetDriverInfo(record) == kOxNoError;
}

bool CS80ClientImpl::GetLibraryInfo(OxVersionInfo* record) {
    if (!record) return false;
    std::memset(record, 0, sizeof(*record));
    OxGetLibraryInfo(record);
    return record->version[0] != 0;
}

bool CS80ClientImpl::GrabDevice(bool exclusive) {
    return m_handle != 0 && OxGrabDevice(m_handle, exclusive ? 1 : 0) == kOxNoError;
}

bool CS80ClientImpl::ReleaseDevice() {
    return m_handle != 0 && OxReleaseDevice(m_handle) == kOxNoError;
}

bool CS80ClientImpl::WriteActionImages(const oxImage_t* images, std::uint32_t count) {
    return m_handle != 0 && OxAppCmdWriteActionImages(m_handle, images, count) == kOxNoError;
}

bool CS80ClientImpl::WriteActions(const oxActionNodeEx_s* root) {
    return m_handle != 0 && OxAppCmdWriteActions(m_handle, root) == kOxNoError;
}

bool CS80ClientImpl::ActivateActionSet(const char* id) {
    return m_handle != 0 && OxAppCmdActivateActionSet(m_handle, id) == kOxNoError;
}

bool CS80ClientImpl::GetValue(const char* key, std::string& value) {
    if (m_handle == 0) return false;
    char buffer[1024] = {};
    std::uint32_t size = sizeof(buffer);
    std::int32_t error = OxAppCfgGetValue(m_handle, key, buffer, &size);
    buffer[sizeof(buffer) - 1] = 0;
    value = buffer;
    return error == kOxNoError;
}

bool CS80ClientImpl::SetValue(const char* key, const char* value) {
    return m_handle != 0 && OxAppCfgSetValue(m_handle, key, value) == kOxNoError;
}

bool CS80ClientImpl::GetDeviceInfoAux(std::uint32_t& word) {
    OxDeviceInfo info{};
    if (!ReadDeviceInfo(info)) return false;
    word = info.aux;
    return true;
}

bool CS80ClientImpl::GetKeyLabel(std::uint32_t product, std::uint32_t button, std::wstring& text) {
    std::uint32_t key = s3dm::TranslateKey(product, button, true);
    if (key == 0) return false;
    text = s3dm::KeyLabel(key);
    return !text.empty();
}

bool CS80ClientImpl::GetButtonName(std::uint32_t button, std::wstring& text) {
    if (m_handle == 0 || button == 0) return false;
    OxDeviceInfo info{};
    if (ReadDeviceInfo(info)) {
        if (std::uint32_t product = ProductOfDeviceType(info.deviceType)) {
            text = s3dm::KeyLabel(s3dm::TranslateKey(product, button, true));
            return true;
        }
    }
    OxButtonName name{};
    if (OxGetButtonName(m_handle, static_cast<std::int32_t>(button), &name) != kOxNoError) {
        return false;
    }
    name.name[sizeof(name.name) - 1] = 0;
    text = qvx::os::WidenAcp(name.name);
    return true;
}

bool CS80ClientImpl::SetButtonName(std::int32_t button, const char* name) {
    return m_handle != 0 && OxSyncSetButtonName(m_handle, button, name) == kOxNoError;
}

bool CS80ClientImpl::SetInfoLine(std::int32_t duration, const char* text) {
    return m_handle != 0 && OxSyncSetInfoLine(m_handle, duration, text) == kOxNoError;
}

bool CS80ClientImpl::GetButtonAssignment(std::int32_t button, std::int32_t& function) {
    return m_handle != 0 && OxSyncGetButtonAssignment(m_handle, button, &function) == kOxNoError;
}

bool CS80ClientImpl::GetScaleOverall(double& value) {
    if (m_handle == 0) return false;
    float scale = 0;
    if (OxSyncGetScaleOverall(m_handle, &scale) != kOxNoError) return false;
    value = scale;
    return true;
}

bool CS80ClientImpl::InvokeAbsoluteFunction(std::int32_t function) {
    return m_handle != 0 && OxSyncInvokeAbsoluteFunction(m_handle, function) == kOxNoError;
}

bool CS80ClientImpl::SetAxesState(std::int32_t state) {
    return m_handle != 0 && OxSyncSetAxesState(m_handle, state) == kOxNoError;
}

bool CS80ClientImpl::SetButtonAssignment(std::int32_t button, std::int32_t function) {
    return m_handle != 0 && OxSyncSetButtonAssignment(m_handle, button, function) == kOxNoError;
}

bool CS80ClientImpl::SetButtonAssignmentAbsolute(std::int32_t button, std::int32_t function) {
    return m_handle != 0 &&
           OxSyncSetButtonAssignmentAbsolute(m_handle, button, function) == kOxNoError;
}

bool CS80ClientImpl::SetFilter(std::int32_t filter, std::int32_t state) {
    return m_handle != 0 && OxSyncSetFilter(m_handle, filter, state) == kOxNoError;
}

bool CS80ClientImpl::SetOrientation(std::int32_t orientation) {
    return m_handle != 0 && OxSyncSetOrientation(m_handle, orientation) == kOxNoError;
}

bool CS80ClientImpl::SetScaleOverall(double value) {
    return m_handle != 0 &&
           OxSyncSetScaleOverall(m_handle, static_cast<float>(value)) == kOxNoError;
}

std::int32_t CS80ClientImpl::MessageBox(void* owner, const char* text, const char* caption,
                                        std::uint32_t type) {
    if (m_handle == 0) return 0;
    std::int32_t answer = OxMessageBox(owner, text, caption, type);
    if (answer <= 0) throw answer;
    return answer;
}

bool CS80ClientImpl::SetUiMode(std::int32_t mode) {
    return m_handle != 0 && OxSetUiMode(m_handle, mode) == kOxNoError;
}

}  // namespace oxapp::detail
