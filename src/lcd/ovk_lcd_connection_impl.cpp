#include "lcd/ovk_lcd_connection_impl.h"

#include "support/boundary.h"

namespace qvx::lcd {

COvkLcdConnectionImpl::~COvkLcdConnectionImpl() { Shutdown(); }

bool COvkLcdConnectionImpl::Initialize(const LmConnectContext& context,
                                       ILcdSoftButtonSink* buttons) {
    m_callerNotify = context.onNotify;
    m_callerContext = context.notifyContext;
    LmConnectContext own = context;
    own.onNotify = &COvkLcdConnectionImpl::NotifyThunk;
    own.notifyContext = this;
    return CLCDConnection::Initialize(own, buttons);
}

bool COvkLcdConnectionImpl::Connect() {
    std::lock_guard<std::mutex> guard(m_lock);
    return CLCDConnection::Connect();
}

void COvkLcdConnectionImpl::Notify(std::int32_t connection, std::uint32_t code,
                                   std::uint32_t param1, std::uint32_t param2) {
    {
        std::lock_guard<std::mutex> guard(m_lock);
        m_events.Push({kLcdEventNotification, code, param1, param2, 0, 0});
    }
    if (m_callerNotify) m_callerNotify(connection, m_callerContext, code, param1, param2);
}

void COvkLcdConnectionImpl::Drain() {
    for (;;) {
        LcdEvent event;
        {
            std::lock_guard<std::mutex> guard(m_lock);
            if (!m_events.Pop(event)) return;
        }
        if (event.kind == kLcdEventNotification) OnNotification(event.code, event.param1);
    }
}

std::size_t COvkLcdConnectionImpl::QueuedEvents() {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_events.Size();
}

std::size_t COvkLcdConnectionImpl::QueueCapacity() {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_events.Capacity();
}

std::uint32_t QVX_LCD_CALL COvkLcdConnectionImpl::NotifyThunk(std::int32_t connection,
                                                              void* context, std::uint32_t code,
                                                              std::uint32_t param1,
                                                              std::uint32_t param2) {
    return qvx::CallAtBoundary("COvkLcdConnectionImpl::OnNotify", std::uint32_t{0}, [&] {
        static_cast<COvkLcdConnectionImpl*>(context)->Notify(connection, code, param1, param2);
        return std::uint32_t{0};
    });
}

}  // namespace qvx::lcd
