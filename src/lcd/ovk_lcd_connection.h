// COvkLcdConnection: the process's one applet connection to the LCD manager, by its friendly
// name; COvkLcdImpl does the work: the connection under a name unique in the system, the
// pages of each panel, and the three functors that carry buttons, notifications and
// configure requests out of the library's thread.
#pragma once

#include "lcd/applet_name_claim.h"
#include "lcd/lcd_functor.h"
#include "lcd/ovk_lcd_connection_impl.h"
#include "lcd/widgets/ovk_lcd_page.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace qvx::lcd {

constexpr std::uint32_t kConnectFailed = 0x80004005;  ///< E_FAIL

/// The page types of CreatePage.
constexpr int kMonoPage = 0;
constexpr int kColorPage = 1;

class COvkLcdImpl : public ILcdSoftButtonSink {
public:
    explicit COvkLcdImpl(ILcdLibrary& library) : m_library(&library) {}
    virtual ~COvkLcdImpl();

    /// Stores the mask under the lock, then hands it to the button functor.
    void OnSoftButtons(std::uint32_t mask) override;

    /// Connects under `friendlyName`, or, when another applet holds that name, under the
    /// first free "name (n)". 0 or kConnectFailed (also when connected already).
    std::uint32_t Connect(const std::wstring& friendlyName, bool autostartable,
                          const std::wstring& programPath);
    /// Disconnects and gives the name back; the pages stay.
    void Disconnect();
    bool IsConnected() const { return m_holder.connection && m_holder.connection->IsConnected(); }
    /// The name the manager knows the applet by; empty while not connected.
    const std::wstring& ConnectedName() const { return m_connectedName; }

    COvkLcdPage* CreatePage(int type);
    bool RemovePage(COvkLcdPage* page);
    bool ShowPage(COvkLcdPage* page, bool bringUp);
    bool IsPageVisible(const COvkLcdPage* page) const;
    void Update();
    /// Asks the manager for every open device, as an applet about to come up does.
    void RequestDevices();
    /// With true, first RequestDevices; then the foreground flag of every output.
    void SetForeground(bool foreground);

    void SetButtonCallback(_Qvx::IOvkLcdFunctor* functor);
    void SetConfigureCallback(_Qvx::IOvkLcdFunctor* functor);
    void SetNotifyCallback(_Qvx::IOvkLcdFunctor* functor);

    /// The connection while connected, for tests and the simulated manager's checks.
    COvkLcdConnectionImpl* Connection() const { return m_holder.connection.get(); }
    /// Replaces the library; only while not connected.
    void SetLibrary(ILcdLibrary& library) { m_library = &library; }
    std::uint32_t LastButtons();

private:
    struct COvkLcdConnectionHolder {
        std::unique_ptr<COvkLcdConnectionImpl> connection;
        std::optional<CAppletNameClaim> nameClaim;
    };
    using PageList = std::vector<std::unique_ptr<COvkLcdPage>>;

    static std::uint32_t QVX_LCD_CALL ConfigureThunk(std::int32_t, const wchar_t*, void* context);
    static std::uint32_t QVX_LCD_CALL NotifyThunk(std::int32_t, void* context, std::uint32_t code,
                                                  std::uint32_t, std::uint32_t);
    CLCDOutput* OutputFor(const COvkLcdPage* page) const;
    _Qvx::IOvkLcdFunctor* Functor(_Qvx::IOvkLcdFunctor* const& slot);

    ILcdLibrary* m_library;
    COvkLcdConnectionHolder m_holder;
    PageList m_monoPages;
    PageList m_colorPages;
    std::int32_t m_deviceType = kLmDeviceColor;
    std::wstring m_connectedName;
    std::mutex m_lock;
    std::uint32_t m_buttons = 0;
    _Qvx::IOvkLcdFunctor* m_buttonFunctor = nullptr;
    _Qvx::IOvkLcdFunctor* m_configureFunctor = nullptr;
    _Qvx::IOvkLcdFunctor* m_notifyFunctor = nullptr;
};

class COvkLcdConnection {
public:
    /// The singleton; made under the name "Quorvex Applet" if nothing made it before.
    static COvkLcdConnection& Instance();
    /// The singleton; made under `name` if nothing made it before, else as it is.
    static COvkLcdConnection& Instance(const std::wstring& name);

    COvkLcdConnection(const COvkLcdConnection&) = delete;
    COvkLcdConnection& operator=(const COvkLcdConnection&) = delete;
    virtual ~COvkLcdConnection();

    const std::wstring& FriendlyName() const { return m_name; }
    COvkLcdImpl& Impl() { return *m_impl; }

    /// Connects with the singleton's name; true on success.
    bool Connect(bool autostartable);
    void Disconnect() { m_impl->Disconnect(); }
    COvkLcdPage* CreatePage(int type) { return m_impl->CreatePage(type); }
    bool RemovePage(COvkLcdPage* page) { return m_impl->RemovePage(page); }
    bool ShowPage(COvkLcdPage* page, bool bringUp) { return m_impl->ShowPage(page, bringUp); }
    bool IsPageVisible(const COvkLcdPage* page) const { return m_impl->IsPageVisible(page); }
    void Update() { m_impl->Update(); }
    void SetForeground(bool foreground) { m_impl->SetForeground(foreground); }
    void RequestDevices() { m_impl->RequestDevices(); }
    void SetButtonCallback(_Qvx::IOvkLcdFunctor* f) { m_impl->SetButtonCallback(f); }
    void SetConfigureCallback(_Qvx::IOvkLcdFunctor* f) { m_impl->SetConfigureCallback(f); }
    void SetNotifyCallback(_Qvx::IOvkLcdFunctor* f) { m_impl->SetNotifyCallback(f); }
    CLCDBitmap* CreateBitmap(COvkLcdPage* page, int width, int height);
    CLCDText* CreateText(COvkLcdPage* page, int points, int width, int weight, int lines);

private:
    explicit COvkLcdConnection(std::wstring name);

    std::unique_ptr<COvkLcdImpl> m_impl;
    std::wstring m_name;
};

}  // namespace qvx::lcd
