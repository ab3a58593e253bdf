// CS80ClientImpl: the transport half of a device. It owns the hidden client window, the
// message thread, the timers and the connection handle, calls the driver's library, and
// hands what arrives to the public half through the event interfaces.
//
// Threads: Create, Close and the ICfg, ISync and IUI operations run on the plug-in's main
// thread, which owns the client window and runs every handler of its messages. The library
// may call the callback entry on a thread of its own. The timers run on the timer queue's
// threads and only address the client window by its handle, with a posted or sent message,
// so their effect lands on the window's thread and a timer that fires after the client is
// gone touches nothing of it. Only the stored motion event is locked; the weak self
// reference, locked on every event entry, is what keeps the object alive while an event is
// handled, and what silences the event messages once the client has disconnected.
#pragma once

#include "client/detail/client_interfaces.h"
#include "client/detail/client_window_win32.h"
#include "client/detail/event_interfaces.h"
#include "client/detail/kvw_event.h"
#include "client/detail/message_thread_win32.h"
#include "client/oxapp/client_flags.h"
#include "client/ovk/shared_hmodule_win32.h"
#include "support/queue_timer.h"
#include "support/timer_queue.h"
#include "support/win32_handles.h"
#include "support/windows_api.h"

#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <atomic>
#include <cstdint>
#include <string>

// The system headers above define MessageBox as a macro; IUI's operation keeps its name.
#ifdef MessageBox
#undef MessageBox
#endif

namespace oxapp::detail {

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
    bool WriteActionImages(const oxImage_t* images, std::uint32_t count) override;
    bool WriteActions(const oxActionNodeEx_s* root) override;
    bool ActivateActionSet(const char* id) override;
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

    /// The client window's message map, chained under CClientWindowImpl::kClientChainId.
    bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                              LRESULT& result, DWORD mapId) override;

    /// Sorts one event by type and runs it: nonzero when it was taken. An exception from a
    /// slot stops here and counts as "not taken".
    std::int32_t DispatchEvent(const CKvwEvent& event);

    /// The library's callback entry: 0 when the event was taken, -1 when not or when the
    /// client has disconnected. Never throws.
    static std::int32_t CallbackEntry(const OxKvwEvent* event, void* context);

    /// The periods of the client's one-shot timers, in milliseconds.
    struct TimerPeriods {
        DWORD syncQuery = 2000;     ///< the driver's answer to the sync query is waited for
        DWORD nextFunction = 1000;  ///< the pause between two function answers
        DWORD motionEnd = 50;       ///< a zero event becomes the end of motion
    };
    /// For tests: the periods of every client's timers from now on, and a function that every
    /// timer callback runs first (null for none; it may throw).
    static void SetTimersForTest(const TimerPeriods& periods, void (*probe)());

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
    /// A strong reference to the complete object; empty while it is being destroyed.
    boost::shared_ptr<ovk::IObject> Self();
    /// The sync query's time is up: the client gives itself the go-ahead.
    std::int32_t SyncQueryUnanswered();
    static TimerPeriods TimerPeriodsInForce();
    /// Runs the tests' probe, if one is set.
    static void RunTimerProbe();
    // The timer callbacks. Their context is the client window's handle, never the client.
    static void CALLBACK OnSyncTimer(void* window, BOOLEAN);
    static void CALLBACK OnSyncAnswerTimer(void* window, BOOLEAN);
    static void CALLBACK OnMotionTimer(void* window, BOOLEAN);

    /// The motion path copies a whole record under this lock; spinning first is cheaper than
    /// sleeping for so short a hold.
    static constexpr DWORD kEventLockSpinCount = 4000;

    std::string m_appName;
    std::uint32_t m_flags = 0;
    std::wstring m_windowName;
    boost::shared_ptr<CClientWindowImpl> m_window;
    CS80MessageThread m_thread;
    OxEventCallback m_callback = nullptr;
    OxHandle m_handle = 0;
    std::uint32_t m_syncId = 0;
    std::uint32_t m_deviceType = 0;
    ovklib::CCriticalSection m_eventLock{kEventLockSpinCount};
    ovklib::CTimerQueue m_timers;
    // Declared after the queue, so that they are cancelled before it goes.
    ovklib::CQueueTimer m_syncTimer;
    ovklib::CQueueTimer m_motionTimer;
    std::int32_t m_functionCount = 0;
    CKvwEvent m_current;
    /// A zero event of the data model that nothing reads yet.
    CKvwEvent m_spare;
    OxVersionInfo m_driverVersion{};
    ovk::shared_hmodule m_module;
    boost::weak_ptr<ovk::IObject> m_weakSelf;
    /// The client window as the timers address it; read on any thread that starts a timer.
    std::atomic<HWND> m_timerWindow{nullptr};
};

}  // namespace oxapp::detail
