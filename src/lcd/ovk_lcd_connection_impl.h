// COvkLcdConnectionImpl: the applet library's connection. The library's notifications arrive
// on the library's own thread; there they are only queued, under the lock, and the caller's
// callback told (which posts a message). The main thread drains the queue at each update and
// opens and closes devices there.
#pragma once

#include "lcd/lcd_event_ring.h"
#include "lcd/widgets/lcd_connection.h"

#include <mutex>

namespace qvx::lcd {

class COvkLcdConnectionImpl : public CLCDConnection {
public:
    explicit COvkLcdConnectionImpl(ILcdLibrary& library) : CLCDConnection(library) {}
    ~COvkLcdConnectionImpl() override;

    /// Puts its own notification callback in the context, remembering the caller's.
    bool Initialize(const LmConnectContext& context, ILcdSoftButtonSink* buttons) override;
    void Drain() override;

    /// What the library's thread does with a notification: queue it and tell the caller.
    void Notify(std::int32_t connection, std::uint32_t code, std::uint32_t param1,
                std::uint32_t param2);
    std::size_t QueuedEvents();
    std::size_t QueueCapacity();

protected:
    /// Connects under the lock, so that no notification is queued halfway.
    bool Connect() override;

private:
    static std::uint32_t QVX_LCD_CALL NotifyThunk(std::int32_t connection, void* context,
                                                  std::uint32_t code, std::uint32_t param1,
                                                  std::uint32_t param2);

    std::mutex m_lock;
    CLcdEventRing m_events;
    LmNotifyProc m_callerNotify = nullptr;
    void* m_callerContext = nullptr;
};

}  // namespace qvx::lcd
