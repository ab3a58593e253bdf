// The calls by which the transport half of a device hands events to the public half.
#pragma once

#include "client/detail/kvw_event.h"
#include "client/oxapp/ox_records.h"
#include "client/ovk/interface.h"

#include <cstdint>

namespace oxapp::detail {

class IClientEvents : public virtual ovk::IInterface {
public:
    virtual void OnDeviceChanged(OxHandle handle) = 0;
    virtual void OnKey(OxHandle handle, std::uint32_t key, bool pressed) = 0;
    /// Three translations and three rotations in the application's axes.
    virtual void OnMotion(OxHandle handle, const float values[6]) = 0;

protected:
    ~IClientEvents() = default;
};

/// What the sync exchange learns. The records are the driver's sync events.
class ISyncEvents : public virtual ovk::IInterface {
public:
    virtual void OnAxesState(std::int32_t state) = 0;
    virtual void OnFunctionCount(std::int32_t count) = 0;
    virtual void OnFilter(const void* record) = 0;
    virtual void OnFunction(const void* record) = 0;
    virtual void OnButtonAssignment(const void* record) = 0;
    virtual void OnOrientation(const void* record) = 0;
    virtual void OnSyncDone() = 0;
    virtual void OnScaleOverall(double value) = 0;

protected:
    ~ISyncEvents() = default;
};

class ICfgEvents : public virtual ovk::IInterface {
public:
    virtual void OnValueChanged(OxHandle handle) = 0;

protected:
    ~ICfgEvents() = default;
};

class ICmdEvents : public virtual ovk::IInterface {
public:
    /// `command` is the event record's text and lives until the call returns.
    virtual void OnCommand(OxHandle handle, const char* command, bool pressed) = 0;
    virtual void OnCommandEx(OxHandle handle, std::uint32_t id, bool pressed, const void* blockA,
                             const void* blockB) = 0;

protected:
    ~ICmdEvents() = default;
};

}  // namespace oxapp::detail
