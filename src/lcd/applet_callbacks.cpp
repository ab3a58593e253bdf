#include "lcd/applet_callbacks.h"

namespace qvx::lcd {

void CQvxButtonCallBack::operator()(std::uint32_t mask) {
    std::uint32_t old = m_lastMask.exchange(mask);
    // A report in which one button goes up and another goes down counts as a release of
    // both: only a report that keeps every old bit is a press.
    bool noneReleased = (old & mask) == old;
    m_platform.Post(m_window, noneReleased ? kMsgButtonPressed : kMsgButtonReleased, old ^ mask, 0);
}

void CQvxNotifyCallBack::operator()(std::uint32_t code) {
    m_platform.Post(m_window, kMsgNotification, code, 0);
}

}  // namespace qvx::lcd
