// The signal groups a device object is made of. Each group owns its signals and hands out
// slots; the object's single reference count comes from the device they are part of.
#pragma once

#include "client/oxapp/signal_interfaces.h"
#include "client/ovk/signals.h"

#include <atomic>
#include <cstdint>

namespace oxapp::detail {

class CSensorSignals : public ISensorSignals, public ovk::detail::CSignal {
public:
    ovk::ISlot* ConnectMotion(boost::function<void()> slot) override;
    ovk::ISlot* ConnectMotionEnd(boost::function<void()> slot) override;
    ovk::ISlot* ConnectMotionStart(boost::function<void()> slot) override;
    bool IsActive() override;
    void Begin() override;
    void End() override;

protected:
    ~CSensorSignals() = default;
    void FireMotion() { m_motion(); }

private:
    std::atomic<std::int32_t> m_activity{0};
    signal_type<void()> m_motion;
    signal_type<void()> m_end;
    signal_type<void()> m_start;
};

class CKeyboardSignals : public IKeyboardSignals, public ovk::detail::CSignal {
public:
    ovk::ISlot* ConnectKeyDown(KeySlot slot) override;
    ovk::ISlot* ConnectKeyUp(KeySlot slot) override;

protected:
    ~CKeyboardSignals() = default;
    void FireKey(std::uint32_t key, bool down);

private:
    signal_type<void(s3dm::e3dmouse_virtual_key)> m_keyDown;
    signal_type<void(s3dm::e3dmouse_virtual_key)> m_keyUp;
};

class CAppcmdSignals : public IAppcmdSignals, public ovk::detail::CSignal {
public:
    ovk::ISlot* ConnectCommand(CommandSlot slot) override;
    ovk::ISlot* ConnectCommandEx(CommandExSlot slot) override;

protected:
    ~CAppcmdSignals() = default;
    void FireCommand(const char* command, bool pressed) { m_command(command, pressed); }
    void FireCommandEx(std::uint32_t id, bool pressed, const void* a, const void* b) {
        m_commandEx(id, pressed, a, b);
    }

private:
    signal_type<void(std::uint32_t, bool, const void*, const void*)> m_commandEx;
    signal_type<void(const char*, bool)> m_command;
};

class CAppcfgSignals : public IAppcfgSignals, public ovk::detail::CSignal {
public:
    ovk::ISlot* ConnectValueChanged(boost::function<void()> slot) override;

protected:
    ~CAppcfgSignals() = default;
    void FireValueChanged() { m_valueChanged(); }

private:
    signal_type<void()> m_valueChanged;
};

/// Complete but unused: no device derives from it.
class CHalvaneSignals : public IHalvaneSignals, public ovk::detail::CSignal {
public:
    ovk::ISlot* ConnectDeviceChanged(boost::function<void()> slot) override;
    ovk::ISlot* ConnectSettingsChanged(boost::function<void()> slot) override;
    ovk::ISlot* ConnectApplicationChanged(boost::function<void()> slot) override;

protected:
    ~CHalvaneSignals() = default;

private:
    signal_type<void()> m_deviceChanged;
    signal_type<void()> m_settingsChanged;
    signal_type<void()> m_applicationChanged;
};

}  // namespace oxapp::detail
