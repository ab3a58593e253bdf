// The signal groups of a device object. Each ConnectX returns a slot with one reference, which
// the caller wraps in ovk::interface_ptr<ovk::ISlot>; slots run on the thread that delivered
// the event.
#pragma once

#include "client/oxapp/virtual_key.h"
#include "client/ovk/signals.h"

#include <boost/function.hpp>

#include <cstdint>

namespace oxapp {

class ISensorSignals : public virtual ovk::IInterface {
public:
    virtual ovk::ISlot* ConnectMotion(boost::function<void()> slot) = 0;
    virtual ovk::ISlot* ConnectMotionEnd(boost::function<void()> slot) = 0;
    virtual ovk::ISlot* ConnectMotionStart(boost::function<void()> slot) = 0;
    /// True while more Begin() than End() calls were made.
    virtual bool IsActive() = 0;
    /// The first Begin() of a run fires the start signal.
    virtual void Begin() = 0;
    /// The End() that closes the run fires the end signal; an End() too many does nothing.
    virtual void End() = 0;

protected:
    ~ISensorSignals() = default;
};

class IKeyboardSignals : public virtual ovk::IInterface {
public:
    using KeySlot = boost::function<void(s3dm::e3dmouse_virtual_key)>;
    virtual ovk::ISlot* ConnectKeyDown(KeySlot slot) = 0;
    virtual ovk::ISlot* ConnectKeyUp(KeySlot slot) = 0;

protected:
    ~IKeyboardSignals() = default;
};

class IAppcmdSignals : public virtual ovk::IInterface {
public:
    /// An action's identifier, pressed or released. The text lives until the slot returns.
    using CommandSlot = boost::function<void(const char* command, bool pressed)>;
    /// A numeric command with its two blocks of sixteen words (integers, then floats).
    using CommandExSlot = boost::function<void(std::uint32_t id, bool pressed, const void* blockA,
                                               const void* blockB)>;
    virtual ovk::ISlot* ConnectCommand(CommandSlot slot) = 0;
    virtual ovk::ISlot* ConnectCommandEx(CommandExSlot slot) = 0;

protected:
    ~IAppcmdSignals() = default;
};

class IAppcfgSignals : public virtual ovk::IInterface {
public:
    virtual ovk::ISlot* ConnectValueChanged(boost::function<void()> slot) = 0;

protected:
    ~IAppcfgSignals() = default;
};

/// Offered for a device of the device software's own kind; no device here has them.
class IHalvaneSignals : public virtual ovk::IInterface {
public:
    virtual ovk::ISlot* ConnectDeviceChanged(boost::function<void()> slot) = 0;
    virtual ovk::ISlot* ConnectSettingsChanged(boost::function<void()> slot) = 0;
    virtual ovk::ISlot* ConnectApplicationChanged(boost::function<void()> slot) = 0;

protected:
    ~IHalvaneSignals() = default;
};

}  // namespace oxapp
