#include "client/detail/signal_groups.h"

namespace oxapp::detail {

ovk::ISlot* CSensorSignals::ConnectMotion(boost::function<void()> slot) {
    return Connect(m_motion, std::move(slot));
}
ovk::ISlot* CSensorSignals::ConnectMotionEnd(boost::function<void()> slot) {
    return Connect(m_end, std::move(slot));
}
ovk::ISlot* CSensorSignals::ConnectMotionStart(boost::function<void()> slot) {
    return Connect(m_start, std::move(slot));
}

bool CSensorSignals::IsActive() { return m_activity.load() > 0; }

void CSensorSignals::Begin() {
    if (++m_activity == 1) m_start();
}

void CSensorSignals::End() {
    std::int32_t now = --m_activity;
    if (now < 0) {
        // An End() without its Begin(): back to rest, and no end is reported.
        m_activity = 0;
        return;
    }
    if (now == 0) m_end();
}

ovk::ISlot* CKeyboardSignals::ConnectKeyDown(KeySlot slot) {
    return Connect(m_keyDown, std::move(slot));
}
ovk::ISlot* CKeyboardSignals::ConnectKeyUp(KeySlot slot) {
    return Connect(m_keyUp, std::move(slot));
}

void CKeyboardSignals::FireKey(std::uint32_t key, bool down) {
    auto value = static_cast<s3dm::e3dmouse_virtual_key>(key);
    if (down) {
        m_keyDown(value);
    } else {
        m_keyUp(value);
    }
}

ovk::ISlot* CAppcmdSignals::ConnectCommand(CommandSlot slot) {
    return Connect(m_command, std::move(slot));
}
ovk::ISlot* CAppcmdSignals::ConnectCommandEx(CommandExSlot slot) {
    return Connect(m_commandEx, std::move(slot));
}

ovk::ISlot* CAppcfgSignals::ConnectValueChanged(boost::function<void()> slot) {
    return Connect(m_valueChanged, std::move(slot));
}

ovk::ISlot* CHalvaneSignals::ConnectDeviceChanged(boost::function<void()> slot) {
    return Connect(m_deviceChanged, std::move(slot));
}
ovk::ISlot* CHalvaneSignals::ConnectSettingsChanged(boost::function<void()> slot) {
    return Connect(m_settingsChanged, std::move(slot));
}
ovk::ISlot* CHalvaneSignals::ConnectApplicationChanged(boost::function<void()> slot) {
    return Connect(m_applicationChanged, std::move(slot));
}

}  // namespace oxapp::detail
