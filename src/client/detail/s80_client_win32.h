// CS80ClientImpl: the transport half of a device. It owns the hidden client window, the
// message thread, the timers and the connection handle, calls the driver's library, and
// hands what arrives to the public half through the event interfaces.
//
// Threads: Create, Close and the ICfg, ISync and IUI operations run on the plug-in's main
// thread, which owns the client window and runs every handler of its messages. The library
// may call the callback entry on a thread of its own; the timers run on the timer queue's
// thread and post or send a message, so their effect lands on the window's thread. Only the
// stored motion event is locked; the weak self reference, locked on every entry, is what
// keeps the object alive while an event is handled.
#pragma once

#include "client/detail/client_interfaces.h"
#include "client/detail/client_window_win32.h"
#include "client/detail/event_interfaces.h"
#include "client/detail/kvw_event.h"
#include "client/detail/message_thread_win32.h"
#include "client/ovk/shared_hmodule_win32.h"
#include "support/timer_queue.h"
#include "support/win32_handles.h"
#include "support/windows_api.h"

#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <cstdint>
#include <string>

// The system headers above define MessageBox as a macro; IUI's operation keeps its name.
#ifdef MessageBox
#undef MessageBox
#endif

namespace oxapp::detail {

/// What a client receives and shares; every bit is tested where its event arrives.
enum ClientFlags : std::uint32_t {
    kFlagMotion = 0x01,         ///< motion and zero events; without it the driver opens mode 9
    kFlagKeys = 0x02,           ///< key events
    kFlagSyncState = 0x04,      ///< axes, filters and orientation take part in the sync
    kFlagSyncFunctions = 0x08,  ///< the function list takes part in the sync
    kFlagCommands = 0x10,       ///< commands and configuration changes
    kFlagCallback = 0x20,       ///< the library's callback; with commands also the grab id
    kFlagProxy = 0x40,          ///< the driver talks to the proxy window on the message thread
};

class CS80ClientImpl : public IClient,
                       public ICfg,
                       public IReflexion,
                       public ISync,
                       public IUI,
                       public IMessageMap {
public:
    /// An empty `appName` becomes the base name of the host's executable.
    explicit CS80ClientImpl(const std::string& appName);
    CS80ClientImpl(const CS80ClientImpl&) = delete;
    CS80ClientImpl& operator=(const CS80ClientImpl&) = delete;
    virtual ~CS80ClientImpl();

    // IClient
    bool Close() override;
    bool Create(void* parent, std::uint32_t flags) override;
    bool GetProductIdAt(std::uint32_t index, std::uint32_t& pid) override;
    bool GetProductId(std::uint32_t& pid) override;
    bool GetDeviceType(std::uint32_t& type) override;
    bool GetDriverInfo(OxVersionInfo* record) override;
    bool GetLibraryInfo(OxVersionInfo* record) override;
    std::uint32_t GetAttachedDeviceCount() override;
    bool GrabDevice(bool exclusive) override;
    bool ReleaseDevice() override;
    // ICfg
    bool GetValue(const char* key, std::string& value) override;
    bool SetValue(const char* key, const char* value) override;
    // IReflexion
    bool InjectKeyDown(std::uint32_t key) override;
    bool InjectKeyUp(std::uint32_t key) override;
    // ISync
    bool GetDeviceInfoAux(std::uint32_t& word) override;
    bool GetKeyLabel(std::uint32_t product, std::uint32_t button, std::wstring& text) override;
    bool GetButtonName(std::uint32_t button, std::wstring& text) override;
    bool SetButtonName(std::int32_t button, const char* name) override;
    bool SetInfoLine(std::int32_t duration, const char* text) override;
    bool GetButtonAssignment(std::int32_t button, std::int32_t& function) override;
    bool GetScaleOverall(double& value) override;
    bool InvokeAbsoluteFunction(std::int32_t function) override;
    bool SetAxesState(std::int32_t state) override;
    bool SetButtonAssignment(std::int32_t button, std::int32_t function) override;
    bool SetButtonAssignmentAbsolute(std::int32_t button, std::int32_t function) override;
    bool SetFilter(std::int32_t filter, std::int32_t state) override;
    bool SetOrientation(std::int32_t orientation) override;
    bool SetScaleOverall(double value) override;
    // IUI
    std::int32_t MessageBox(void* owner, const char* text, const char* caption,
                            std::uint32_t type) override;
    bool SetUiMode(std::int32_t mode) override;

    /// The client window's message map, chained under 234.
    bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                              LRESULT& result, DWORD mapId) override;

    /// Sorts one event by type and runs it: nonzero when it was taken.
    std::int32_t DispatchEvent(const CKvwEvent& event);

    /// The library's callback entry: 0 when the event was taken, -1 when not.
    static std::int32_t CallbackEntry(const OxKvwEvent* event, void* context);

    // For the owner and tests.
    OxHandle Connection() const { return m_handle; }
    std::uint32_t Flags() const { return m_flags; }
    HWND Window() const;
    std::uint32_t SyncId() const { return m_syncId; }
    const std::string& AppName() const { return m_appName; }

protected:
    /// The public half that receives the events; set by the complete object.
    virtual IClientEvents& ClientEvents() = 0;
    virtual ISyncEvents& SyncEvents() = 0;
    virtual ICfgEvents& CfgEvents() = 0;
    virtual ICmdEvents& CmdEvents() = 0;

private:
    bool Connect();
    bool Disconnect();
    bool ReportDevice();
    void StartSyncExchange();
    std::int32_t HandleEventMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void HandleReconnect(WPARAM wParam);
    std::int32_t HandleSyncMessage(WPARAM wParam);
    std::int32_t HandleSync(const OxKvwEvent& event);
    std::int32_t FullSync(const OxKvwEvent& event);
    std::int32_t SyncAnswer(const OxKvwEvent& event);
    std::int32_t ZeroMotion();
    void DeliverMotion(const OxKvwEvent& event);
    std::int32_t Command(const OxKvwEvent& event);
    std::int32_t MatrixCommand(const OxKvwEvent& event);
    std::int32_t ConnectionChanged();
    void SetGrabSyncId();
    /// The device record of the open connection; false without one.
    bool ReadDeviceInfo(OxDeviceInfo& info);
    std::uint32_t ModuleNameSum();
    bool Has(std::uint32_t flags) const { return (m_flags & flags) != 0; }
    static void CALLBACK OnSyncTimer(void* context, BOOLEAN);
    static void CALLBACK OnSyncAnswerTimer(void* context, BOOLEAN);
    static void CALLBACK OnMotionTimer(void* context, BOOLEAN);

    std::string m_appName;
    std::uint32_t m_flags = 0;
    std::wstring m_windowName;
    boost::shared_ptr<CClientWindowImpl> m_window;
    CS80MessageThread m_thread;
    OxEventCallback m_callback = nullptr;
    OxHandle m_handle = 0;
    std::uint32_t m_syncId = 0;
    std::uint32_t m_deviceType = 0;
    ovklib::CCriticalSection m_eventLock{4000};
    ovklib::CTimerQueue m_timers;
    HANDLE m_syncTimer = nullptr;
    HANDLE m_motionTimer = nullptr;
    std::int32_t m_functionCount = 0;
    CKvwEvent m_current;
    CKvwEvent m_spare;
    OxVersionInfo m_driverVersion{};
    ovk::shared_hmodule m_module;
    boost::weak_ptr<ovk::IObject> m_weakSelf;
};

}  // namespace oxapp::detail
