// CLCDConnection: an applet's connection to the LCD manager through the client library: the
// library's user count, the connection itself, one output per kind of panel asked for, and
// the reaction to the library's notifications (devices come and go). Everything here runs on
// the thread that owns the connection, except the soft-button thunk, which the library calls
// on a thread of its own and which only passes the mask on.
#pragma once

#include "lcd/widgets/lcd_library.h"
#include "lcd/widgets/lcd_output.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace qvx::lcd {

/// Receives the soft-button masks of the connection's devices, on the library's thread.
class ILcdSoftButtonSink {
public:
    virtual void OnSoftButtons(std::uint32_t mask) = 0;

protected:
    ~ILcdSoftButtonSink() = default;
};

class CLCDConnection {
public:
    using GfxFactory = std::function<std::unique_ptr<CLCDGfxBase>(std::int32_t deviceType)>;

    explicit CLCDConnection(ILcdLibrary& library);
    CLCDConnection(const CLCDConnection&) = delete;
    CLCDConnection& operator=(const CLCDConnection&) = delete;
    virtual ~CLCDConnection();

    /// Makes the outputs the context's capabilities ask for (bit 1 or none: mono; bit 2:
    /// colour), counts this user of the library in, connects, and after a short settling
    /// time runs one update. False, with everything undone, when a step fails.
    virtual bool Initialize(const LmConnectContext& context, ILcdSoftButtonSink* buttons);
    /// Disconnects, drops the outputs and counts this user out again.
    virtual void Shutdown();
    bool IsConnected() const { return m_context.connection != kLmInvalidHandle; }
    std::int32_t GetConnectionId() const { return m_context.connection; }

    /// Handles what the library reported, then draws every output.
    virtual void Update();
    virtual void OnDeviceArrival(std::int32_t type);
    virtual void OnDeviceRemoval(std::int32_t type);
    virtual void OnAppletEnabled() {}
    virtual void OnAppletDisabled() {}
    /// Reacts to one notification: devices open and close, the applet is enabled or not.
    virtual void OnNotification(std::uint32_t code, std::uint32_t param1);
    /// A soft-button mask of `device`, on the library's thread: passed to the sink only.
    virtual void OnCallback(std::int32_t device, std::uint32_t mask);
    /// Handles the notifications that came in since the last time; nothing here.
    virtual void Drain() {}

    /// The output of a panel type, or null.
    CLCDOutput* Output(std::int32_t deviceType) const;
    std::vector<CLCDOutput*> Outputs() const;
    /// Replaces the platform's surfaces, for tests; before Initialize.
    void SetGfxFactory(GfxFactory factory) { m_gfxFactory = std::move(factory); }
    /// How long Initialize lets the manager settle before its first update.
    void SetSettleMs(unsigned ms) { m_settleMs = ms; }

protected:
    virtual bool Connect();
    virtual void Disconnect();
    ILcdLibrary& Library() { return m_library; }
    const LmConnectContext& Context() const { return m_context; }

private:
    static std::uint32_t QVX_LCD_CALL SoftButtonsThunk(std::int32_t device, std::uint32_t buttons,
                                                       void* context);
    static std::uint32_t QVX_LCD_CALL DefaultConfigure(std::int32_t, const wchar_t*, void*);

    ILcdLibrary& m_library;
    GfxFactory m_gfxFactory;
    LmConnectContext m_context{};
    std::wstring m_friendlyName;
    ILcdSoftButtonSink* m_buttons = nullptr;
    std::vector<std::unique_ptr<CLCDOutput>> m_outputs;
    bool m_userCounted = false;
    unsigned m_settleMs = 50;
};

}  // namespace qvx::lcd
