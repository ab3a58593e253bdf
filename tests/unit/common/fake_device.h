// A device object for tests that run the plug-in without a driver library: the real public
// half of a device over a transport half that answers from fields the test sets. Installed
// as the device factory, it is what ConnectDriver gets.
#pragma once

#include "client/detail/client_interfaces.h"
#include "client/detail/smart_device_impl.h"
#include "client/oxapp/device_factory.h"

#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace qvx::testing {

class CFakeDevice : public oxapp::detail::CSmartDeviceImpl,
                    public oxapp::detail::IClient,
                    public oxapp::detail::ICfg,
                    public oxapp::detail::IReflexion,
                    public oxapp::detail::IUI {
public:
    CFakeDevice() { ++alive; }
    ~CFakeDevice() override { --alive; }

    // IClient
    bool Close() override { return true; }
    bool Create(void*, std::uint32_t flags) override {
        this->flags = flags;
        return true;
    }
    bool GetProductIdAt(std::uint32_t, std::uint32_t&) override { return false; }
    bool GetProductId(std::uint32_t&) override { return false; }
    bool GetDeviceType(std::uint32_t&) override { return false; }
    bool GetDriverInfo(OxVersionInfo* record) override {
        record->major = driverMajor;
        return driverMajor != 0;
    }
    bool GetLibraryInfo(OxVersionInfo* record) override {
        std::strcpy(record->version, "library");
        return true;
    }
    std::uint32_t GetAttachedDeviceCount() override { return 0; }
    bool GrabDevice(bool exclusive) override {
        grab = exclusive ? 2 : 1;
        return true;
    }
    bool ReleaseDevice() override {
        grab = 0;
        return true;
    }
    // ICfg (these and SetValue also stand for IAppcfg's, which would only forward here)
    bool WriteActionImages(const oxImage_t* images, std::uint32_t count) override {
        imageIds.clear();
        for (std::uint32_t i = 0; i < count; ++i) imageIds.push_back(Text(images[i].id));
        published.push_back("images " + std::to_string(count));
        return true;
    }
    bool WriteActions(const oxActionNodeEx_s* root) override {
        writtenRoot = root ? Text(root->id) : "";
        published.push_back("actions " + writtenRoot + " \"" + (root ? Text(root->label) : "") +
                            "\"");
        return true;
    }
    bool ActivateActionSet(const char* id) override {
        activeSet = Text(id);
        published.push_back("activate " + activeSet);
        return true;
    }
    bool GetValue(const char* key, std::string& value) override {
        auto it = values.find(key);
        if (it == values.end()) return false;
        value = it->second;
        return true;
    }
    using CSmartDeviceImpl::GetValue;
    bool SetValue(const char* key, const char* value) override {
        values[key] = value;
        return true;
    }
    // IReflexion (also stands for IKeyboard's injection)
    bool InjectKeyDown(std::uint32_t) override { return false; }
    bool InjectKeyUp(std::uint32_t) override { return false; }
    // IUI
    std::int32_t MessageBox(void*, const char*, const char*, std::uint32_t) override { return 1; }
    bool SetUiMode(std::int32_t mode) override {
        uiMode = mode;
        return true;
    }

    static std::string Text(const char* text) { return text ? text : ""; }

    /// Fake devices in existence.
    inline static int alive = 0;
    std::int32_t driverMajor = 10;
    std::uint32_t flags = 0;
    std::int32_t grab = -1;
    std::int32_t uiMode = 0;
    std::map<std::string, std::string> values;
    std::vector<std::string> imageIds;
    std::string writtenRoot;
    std::string activeSet;
    /// The three publishing calls in order: "activate SET", "images N", "actions ROOT \"LABEL\"".
    std::vector<std::string> published;
};

/// Installs a maker of CFakeDevice for as long as it lives; `Last()` is the newest device.
class CFakeDeviceFactory {
public:
    explicit CFakeDeviceFactory(std::int32_t driverMajor = 10) : m_major(driverMajor) {
        oxapp::SetDeviceFactoryForTest([this](std::uint32_t flags) {
            auto* device = new CFakeDevice();
            device->driverMajor = m_major;
            device->Create(nullptr, flags);
            m_last = device;
            return ovk::interface_ptr<ovk::IObject>(
                static_cast<ovk::IObject*>(static_cast<oxapp::detail::CSmartDeviceImpl*>(device)));
        });
    }
    ~CFakeDeviceFactory() { oxapp::SetDeviceFactoryForTest(nullptr); }
    CFakeDeviceFactory(const CFakeDeviceFactory&) = delete;
    CFakeDeviceFactory& operator=(const CFakeDeviceFactory&) = delete;

    void SetDriverMajor(std::int32_t major) { m_major = major; }
    /// The device last made; it belongs to whoever holds it.
    CFakeDevice* Last() const { return m_last; }

private:
    std::int32_t m_major;
    CFakeDevice* m_last = nullptr;
};

}  // namespace qvx::testing
