// CS80ClientImpl: construction, the window, connecting and disconnecting, the message map.
#include "client/detail/s80_client_win32.h"

#include "client/detail/oxapp_shim.h"
#include "client/detail/registered_messages_win32.h"
#include "support/boundary.h"

#include <psapi.h>

namespace oxapp::detail {

namespace {

constexpr const wchar_t* kWindowName = L"libovk::s80trans";
constexpr const wchar_t* kLibraryName = L"oxappdll.dll";

// The modes of OxOpen: what they mean is the library's; the client only picks one.
constexpr std::int32_t kOpenModeWithMotion = 1;
constexpr std::int32_t kOpenModeWithoutMotion = 9;
constexpr std::int32_t kAnyDevice = -1;
constexpr std::uint32_t kNoEventMask = 0;
/// What OxGetEvent is asked for; the value is the library's.
constexpr std::int32_t kGetEventFlags = 1;
/// From this major version on, the driver keeps its connections through a restart.
constexpr std::int32_t kDriverKeepsConnections = 17;

using RegisterCallbackFn = std::int32_t (*)(OxEventCallback callback, void* context);
using UnregisterCallbackFn = std::int32_t (*)();

template <typename Fn>
Fn FindEntry(HMODULE module, const char* name) {
    if (!module) return nullptr;
    return reinterpret_cast<Fn>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

}  // namespace

CS80ClientImpl::CS80ClientImpl(const std::string& appName)
    : m_appName(appName), m_flags(0), m_windowName(kWindowName) {
    // m_thread has started its thread by now; the rest begins cleared.
    m_current = CKvwEvent();
    m_spare = CKvwEvent();
    const CRegisteredMessages& messages = ClientMessages();
    // The driver runs in another process, possibly at another integrity level.
    for (UINT message : {messages.command, messages.motionEnd, messages.event, messages.sync}) {
        ChangeWindowMessageFilter(message, MSGFLT_ADD);
    }
    m_driverVersion.major = 0;
    m_module = ovk::shared_hmodule(LoadLibraryW(kLibraryName));
    if (m_appName.empty()) {
        char name[MAX_PATH] = {};
        if (GetModuleBaseNameA(GetCurrentProcess(), nullptr, name, MAX_PATH) > 0) m_appName = name;
    }
}

// The members finish the job in their order: the timers are cancelled, then the queue and
// the lock go, then the message thread ends.
CS80ClientImpl::~CS80ClientImpl() {
    if (m_window) {
        m_window->RemoveChainEntry(CClientWindowImpl::kClientChainId);
        m_window->Destroy();
        m_window.reset();
    }
    m_weakSelf.reset();
    m_module.reset();
}

HWND CS80ClientImpl::Window() const { return m_window ? m_window->Handle() : nullptr; }

bool CS80ClientImpl::Create(void* parent, std::uint32_t flags) {
    if (m_window) return false;
    m_window = boost::shared_ptr<CClientWindowImpl>(new CClientWindowImpl());
    m_window->SetChainEntry(CClientWindowImpl::kClientChainId, this);
    m_flags = flags;
    // Connect runs inside the window's creation, on WM_NCCREATE.
    if (m_window->Create(m_windowName, static_cast<HWND>(parent))) {
        SetWindowTextW(m_window->Handle(), kWindowName);
        return true;
    }
    m_window.reset();
    return false;
}

bool CS80ClientImpl::Close() {
    Disconnect();
    m_timers.Destroy();
    if (m_window) {
        m_window->Destroy();
        m_window.reset();
    }
    m_timerWindow = nullptr;
    return true;
}

boost::shared_ptr<ovk::IObject> CS80ClientImpl::Self() {
    boost::shared_ptr<ovk::IObject> self;
    if (auto* object = dynamic_cast<ovk::IObject*>(this)) object->GetShared(self);
    return self;
}

bool CS80ClientImpl::Connect() {
    if (!m_window) return false;
    HWND window = m_window->Handle();
    if (IsWindow(window)) {
        m_timerWindow = window;
        if (!OxIsDriverAlive()) OxInitialize();
        if (OxIsDriverAlive()) {
            OxGetDriverInfo(&m_driverVersion);
            if (Has(kFlagCallback)) {
                m_callback = &CS80ClientImpl::CallbackEntry;
                if (auto reg = FindEntry<RegisterCallbackFn>(m_module.get(), "RegisterCallback")) {
                    reg(m_callback, this);
                }
            }
            m_weakSelf = Self();
            if (!m_weakSelf.lock()) return false;

            std::int32_t mode = Has(kFlagMotion) ? kOpenModeWithMotion : kOpenModeWithoutMotion;
            if (Has(kFlagProxy)) {
                m_thread.SetTarget(window);
                window = m_thread.ProxyWindow();
            }
            OxWinData data{};
            OxOpenWinInit(&data, window);
            m_handle = OxOpen(m_appName.c_str(), kAnyDevice, kNoEventMask, mode, &data);
            if (m_handle == 0) {
                m_weakSelf.reset();
                return false;
            }
            SetGrabSyncId();
            StartSyncExchange();
            ReportDevice();
        }
    }
    return m_handle != 0;
}

bool CS80ClientImpl::Disconnect() {
    m_thread.ClearTarget();
    m_weakSelf.reset();
    m_driverVersion.major = 0;
    if (m_callback) {
        // A reference of its own, so that the unregistration does not depend on m_module.
        ovklib::CModuleHandle module(LoadLibraryW(kLibraryName));
        if (auto unreg = FindEntry<UnregisterCallbackFn>(module.Get(), "UnregisterCallback")) {
            unreg();
        }
    }
    m_syncTimer.Cancel();
    m_motionTimer.Cancel();
    OxHandle old = m_handle;
    m_handle = 0;
    if (old == 0) return true;
    if (OxIsDriverAlive()) OxClose(old);
    return true;
}

bool CS80ClientImpl::ReportDevice() {
    OxDeviceInfo info{};
    if (OxGetDeviceInfo(m_handle, &info) != kOxNoError) return false;
    if (info.deviceType != m_deviceType) {
        m_deviceType = info.deviceType;
        ClientEvents().OnDeviceChanged(m_handle);
    }
    return true;
}

bool CS80ClientImpl::ProcessWindowMessage(HWND, UINT message, WPARAM wParam, LPARAM lParam,
                                          LRESULT& result, DWORD) {
    const CRegisteredMessages& messages = ClientMessages();
    // None of these handlers stops the default processing of creation and destruction.
    if (message == WM_NCCREATE) {
        Connect();
        return false;
    }
    if (message == WM_NCDESTROY) {
        if (m_window) m_window->RemoveChainEntry(CClientWindowImpl::kClientChainId);
        Disconnect();
        return false;
    }
    // A registration that failed leaves 0, which must not match WM_NULL.
    if (message == 0) return false;
    if (message == messages.event) {
        result = HandleEventMessage(message, wParam, lParam);
        return true;
    }
    if (message == messages.command) {
        HandleReconnect(wParam);
        result = 0;
        return true;
    }
    if (message == messages.motionEnd) {
        if (auto self = m_weakSelf.lock()) DeliverMotion(CKvwEvent());
        result = 0;
        return true;
    }
    if (message == messages.sync) {
        result = HandleSyncMessage(wParam);
        return true;
    }
    if (message == kSyncQueryUnansweredMessage) {
        result = SyncQueryUnanswered();
        return true;
    }
    return false;
}

std::int32_t CS80ClientImpl::HandleEventMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    auto self = m_weakSelf.lock();
    if (!self) return 0;
    OxEventData data{};
    OxGetEventWinInit(&data, message, wParam, lParam);
    CKvwEvent event;
    if (OxGetEvent(m_handle, kGetEventFlags, &data, &event) != kOxIsEvent) return 0;
    return DispatchEvent(event);
}

void CS80ClientImpl::HandleReconnect(WPARAM wParam) {
    if (wParam != kReconnectCommand) return;
    // Unlike the event messages, the request is heard while the client waits unconnected
    // (after a failed connect m_weakSelf is empty): it is how a restarted driver is found.
    // The object is held through its complete form instead; it is empty only while the
    // object is being destroyed.
    auto self = Self();
    if (!self) return;
    // A driver that keeps its connections through a restart is left alone while the client
    // holds one. A waiting client has none to keep: it asks again whatever version the
    // refusing driver gave, or a refused open would leave it deaf for good.
    if (m_handle != 0 && m_driverVersion.major >= kDriverKeepsConnections) return;
    Disconnect();
    Connect();
}

}  // namespace oxapp::detail
