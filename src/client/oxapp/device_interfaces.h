// The services of a device object that consumers ask for by interface_cast: its versions,
// its application configuration values, its user interface, its sensor and its keyboard.
#pragma once

#include "client/oxapp/ox_records.h"
#include "client/ovk/interface.h"

#include <cstdint>

namespace oxapp {

class IInfo : public virtual ovk::IInterface {
public:
    /// Fills the 268-byte record with the driver's version; the first word is the major
    /// version, 0 when the driver did not answer. True when the driver answered.
    virtual bool GetInfo(OxVersionInfo* record) = 0;

protected:
    ~IInfo() = default;
};

class IAppcfg : public virtual ovk::IInterface {
public:
    /// Publishes `count` images in one call. The driver copies them: the records and what
    /// they point at may go once the call returns. Each of the three publishing operations
    /// is false without a connection or when the driver's function failed or is missing,
    /// and never throws.
    virtual bool WriteActionImages(const oxImage_t* images, std::uint32_t count) = 0;
    /// Publishes the whole tree under `root`.
    virtual bool WriteActions(const oxActionNodeEx_s* root) = 0;
    /// Makes the action set `id` the current one.
    virtual bool ActivateActionSet(const char* id) = 0;
    /// The value of `key`. A null `size` gives false. When `*size` is larger than the value's
    /// length and `buffer` is not null the value is copied with its terminator and the result
    /// is the driver's; else `*size` becomes the length plus 1 and the result is false.
    virtual bool GetValue(const char* key, char* buffer, std::uint32_t* size) = 0;
    virtual bool SetValue(const char* key, const char* value) = 0;

protected:
    ~IAppcfg() = default;
};

class ICommand : public virtual ovk::IInterface {
public:
    /// Opens the driver's own user interface.
    virtual bool ShowUi() = 0;

protected:
    ~ICommand() = default;
};

class ISensor : public virtual ovk::IInterface {
public:
    /// The last motion vector: three translations, three rotations.
    virtual void GetValues(double out[6]) = 0;
    /// 1 grabs the device shared, 2 exclusively, anything else releases it.
    virtual bool SetGrabMode(std::int32_t mode) = 0;

protected:
    ~ISensor() = default;
};

class IKeyboard : public virtual ovk::IInterface {
public:
    /// The last known state of `key`; a key never seen counts as pressed.
    virtual bool GetKeyState(std::uint32_t key) = 0;
    /// The same as GetKeyState.
    virtual bool GetKeyState2(std::uint32_t key) = 0;
    /// Asks the dispatcher whether key events would pass; the key goes no further.
    virtual bool InjectKeyDown(std::uint32_t key) = 0;
    virtual bool InjectKeyUp(std::uint32_t key) = 0;

protected:
    ~IKeyboard() = default;
};

}  // namespace oxapp
