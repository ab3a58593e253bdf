// CS80ClientImpl: construction, the window, connecting and disconnecting, the message map.
#include "client/detail/s80_client_win32.h"

#include "client/detail/oxapp_shim.h"
#include "client/detail/registered_messages_win32.h"

#include <psapi.h>

#include <cstring>

namespace oxapp::detail {

namespace {

constexpr const wchar_t* kWindowName = L"libovk::s80trans";

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
    m_module = ovk::shared_hmodule(LoadLibraryW(L"oxappdll.dll"));
    if (m_appName.empty()) {
        char name[260] = {};
        if (GetModuleBaseNameA(GetCurrentProcess(), nullptr, name, 260) > 0) m_appName = name;
    }
}

CS80ClientImpl::~CS80ClientImpl() {
    if (m_window) {
        m_window->RemoveChainEntry(CClientWindowImpl::kClientChainId);
        m_window->Destroy();
        m_window.reset();
    }
    m_weakSelf.reset();
    m_module.reset();
    m_timers.DeleteTimer(m_syncTimer);
    m_timers.DeleteTimer(m_motionTimer);
    m_timers.Destroy();
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
    return true;
}

bool CS80ClientImpl::Connect() {
    if (!m_window) return false;
    HWND window = m_window->Handle();
    if (IsWindow(window)) {
        if (!OxIsDriverAlive()) OxInitialize();
        if (OxIsDriverAlive()) {
            OxGetDriverInfo(&m_driverVersion);
            if (Has(kFlagCallback)) {
                m_callback = &CS80ClientImpl::CallbackEntry;
                if (auto reg = FindEntry<RegisterCallbackFn>(m_module.get(), "RegisterCallback")) {
                    reg(m_callback, this);
                }
            }
            auto* owner = dynamic_cast<ovk::ishared_from_intrusive*>(this);
            try {
                if (owner) m_weakSelf = owner->shared_from_intrusive();
            } catch (...) {
                m_weakSelf.reset();
            }
            if (!m_weakSelf.lock()) return false;

            std::int32_t mode = Has(kFlagMotion) ? 1 : 9;
            if (Has(kFlagProxy)) {
                m_thread.SetTarget(window);
                window = m_thread.ProxyWindow();
            }
            OxWinData data{};
            OxOpenWinInit(&data, window);
            m_handle = OxOpen(m_appName.c_str(), -1, 0, mode, &data);
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
        // A module of its own, so that the unregistration does not depend on m_module.
        if (HMODULE module = LoadLibraryW(L"oxappdll.dll")) {
            if (auto unreg = FindEntry<UnregisterCallbackFn>(module, "UnregisterCallback")) {
                unreg();
            }
            FreeLibrary(module);
        }
    }
    m_timers.DeleteTimer(m_syncTimer);
    m_timers.DeleteTimer(m_motionTimer);
    OxHandle old = m_handle;
    m_handle = 0;
    if (old == 0) return true;
    try {
        if (OxIsDriverAlive()) OxClose(old);
    } catch (...) {
    }
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
    if (message == WM_NCCREATE) {
        Connect();
        return false;
    }
    if (message == WM_NCDESTROY) {
        if (m_window) m_window->RemoveChainEntry(CClientWindowImpl::kClientChainId);
        Disconnect();
        return false;
    }
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
    return false;
}

std::int32_t CS80ClientImpl::HandleEventMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    auto self = m_weakSelf.lock();
    if (!self) return 0;
    OxEventData data{};
    OxGetEventWinInit(&data, message, wParam, lParam);
    CKvwEvent event;
    if (OxGetEvent(m_handle, 1, &data, &event) != kOxIsEvent) return 0;
    return DispatchEvent(event);
}

void CS80ClientImpl::HandleReconnect(WPARAM wParam) {
    auto self = m_weakSelf.lock();
    if (!self) return;
    if (wParam != kReconnectCommand) return;
    // A driver from major version 17 on keeps its connections through a restart.
    if (m_driverVersion.major >= 17) return;
    Disconnect();
    Connect();
}

}  // namespace oxapp::detail
