// The root of a device object: the reference count, and every event call with an empty body,
// so that a device overrides only the events it uses.
#pragma once

#include "client/detail/event_interfaces.h"
#include "client/ovk/interface_impl.h"

namespace oxapp::detail {

class CBaseDevice : public virtual ovk::detail::CInterface,
                    public IClientEvents,
                    public ISyncEvents,
                    public ICfgEvents,
                    public ICmdEvents {
public:
    void OnDeviceChanged(OxHandle) override {}
    void OnKey(OxHandle, std::uint32_t, bool) override {}
    void OnMotion(OxHandle, const float[6]) override {}

    void OnAxesState(std::int32_t) override {}
    void OnFunctionCount(std::int32_t) override {}
    void OnFilter(const void*) override {}
    void OnFunction(const void*) override {}
    void OnButtonAssignment(const void*) override {}
    void OnOrientation(const void*) override {}
    void OnSyncDone() override {}
    void OnScaleOverall(double) override {}

    void OnValueChanged(OxHandle) override {}

    void OnCommand(OxHandle, const char*, bool) override {}
    void OnCommandEx(OxHandle, std::uint32_t, bool, const void*, const void*) override {}

protected:
    ~CBaseDevice() override = default;
};

}  // namespace oxapp::detail
