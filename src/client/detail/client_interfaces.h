// The transport half's services, as the public half of a device and the device's owner see
// them: the connection, configuration values, key injection, the user interface and the
// driver's state for this application.
#pragma once

#include "client/oxapp/ox_records.h"
#include "client/ovk/interface.h"

#include <cstdint>
#include <string>

// IUI::MessageBox keeps its name where the system headers define a macro of that name.
#ifdef MessageBox
#undef MessageBox
#endif

namespace oxapp::detail {

class IClient : public virtual ovk::IInterface {
public:
    /// Disconnects, stops the timers and destroys the window. Always true.
    virtual bool Close() = 0;
    /// Makes the hidden window (which connects as it is made) under `parent`. False when a
    /// window exists already or cannot be made; a driver that is not there is no failure.
    virtual bool Create(void* parent, std::uint32_t flags) = 0;
    /// The product of attached device number `index`, counted from 0.
    virtual bool GetProductIdAt(std::uint32_t index, std::uint32_t& pid) = 0;
    /// The product of the connected device; `pid` is untouched when there is none.
    virtual bool GetProductId(std::uint32_t& pid) = 0;
    virtual bool GetDeviceType(std::uint32_t& type) = 0;
    virtual bool GetDriverInfo(OxVersionInfo* record) = 0;
    virtual bool GetLibraryInfo(OxVersionInfo* record) = 0;
    virtual std::uint32_t GetAttachedDeviceCount() = 0;
    virtual bool GrabDevice(bool exclusive) = 0;
    virtual bool ReleaseDevice() = 0;

protected:
    ~IClient() = default;
};

class ICfg : public virtual ovk::IInterface {
public:
    /// True when the driver's function returned 0; false without a connection.
    virtual bool WriteActionImages(const oxImage_t* images, std::uint32_t count) = 0;
    virtual bool WriteActions(const oxActionNodeEx_s* root) = 0;
    virtual bool ActivateActionSet(const char* id) = 0;
    /// The value of `key` through a buffer of 1024 bytes; `value` is undefined on failure.
    virtual bool GetValue(const char* key, std::string& value) = 0;
    virtual bool SetValue(const char* key, const char* value) = 0;

protected:
    ~ICfg() = default;
};

class IReflexion : public virtual ovk::IInterface {
public:
    /// Whether a key event would pass the dispatcher; nothing is delivered.
    virtual bool InjectKeyDown(std::uint32_t key) = 0;
    virtual bool InjectKeyUp(std::uint32_t key) = 0;

protected:
    ~IReflexion() = default;
};

class IUI : public virtual ovk::IInterface {
public:
    /// The driver's message box. 0 without a connection; a result of 0 or less from the
    /// driver is thrown as an int.
    virtual std::int32_t MessageBox(void* owner, const char* text, const char* caption,
                                    std::uint32_t type) = 0;
    virtual bool SetUiMode(std::int32_t mode) = 0;

protected:
    ~IUI() = default;
};

/// The driver's state for this application. Every operation but GetKeyLabel needs a
/// connection and is true when the driver's function returned 0.
class ISync : public virtual ovk::IInterface {
public:
    virtual bool GetDeviceInfoAux(std::uint32_t& word) = 0;
    virtual bool GetKeyLabel(std::uint32_t product, std::uint32_t button, std::wstring& text) = 0;
    virtual bool GetButtonName(std::uint32_t button, std::wstring& text) = 0;
    virtual bool SetButtonName(std::int32_t button, const char* name) = 0;
    virtual bool SetInfoLine(std::int32_t duration, const char* text) = 0;
    virtual bool GetButtonAssignment(std::int32_t button, std::int32_t& function) = 0;
    virtual bool GetScaleOverall(double& value) = 0;
    virtual bool InvokeAbsoluteFunction(std::int32_t function) = 0;
    virtual bool SetAxesState(std::int32_t state) = 0;
    virtual bool SetButtonAssignment(std::int32_t button, std::int32_t function) = 0;
    virtual bool SetButtonAssignmentAbsolute(std::int32_t button, std::int32_t function) = 0;
    virtual bool SetFilter(std::int32_t filter, std::int32_t state) = 0;
    virtual bool SetOrientation(std::int32_t orientation) = 0;
    virtual bool SetScaleOverall(double value) = 0;

protected:
    ~ISync() = default;
};

}  // namespace oxapp::detail
