#include "lcd/proe_data_impl.h"

#include "toolkit/pro_notification.h"

#include <iostream>

namespace qvx::lcd {
namespace {

/// The host's type 2 notification, which also asks for a refresh.
constexpr ProNotifyType kNotification2 = 2;
constexpr std::uint32_t kDataChangedWParam = 1;
constexpr std::uint32_t kIdleTimerMs = 1000;

// Process-wide, touched only on the host's main thread.
WindowId g_window = 0;
std::uintptr_t g_timer = 0;
IAppletPlatform* g_platform = nullptr;

void CancelTimer() {
    std::uintptr_t id = g_timer;
    g_timer = 0;
    if (id != 0 && g_platform) g_platform->StopCallbackTimer(g_window, id);
}

void OnIdleTimer(WindowId window, std::uintptr_t id) {
    g_timer = 0;
    if (g_platform) g_platform->StopCallbackTimer(window, id);
}

ProError OnRefresh() {
    CLcdProeDataImpl::RefreshRequest();
    return 0;
}

ProError OnPopupCreated() {
    CancelTimer();
    return 0;
}

ProError OnPopupDestroyed() {
    CancelTimer();
    if (g_platform) g_timer = g_platform->StartCallbackTimer(g_window, kIdleTimerMs, &OnIdleTimer);
    return 0;
}

template <ProNotifyType T>
void Register(std::map<ProNotifyType, ProError (*)()>& handlers, ProError (*handler)()) {
    handlers[T] = handler;
    ProError status = CQvxProNotification::Set<T>(handler);
    if (status != 0) {
        std::cout << "CQvxProNotification::Set(" << T << ") status=" << status << std::endl;
    }
}

}  // namespace

CLcdProeDataImpl::CLcdProeDataImpl(WindowId window, IAppletPlatform& platform) {
    g_window = window;
    g_timer = 0;
    g_platform = &platform;
    Register<kNotification2>(m_handlers, &OnRefresh);
    Register<PRO_MDL_RETRIEVE_POST>(m_handlers, &OnRefresh);
    Register<PRO_WINDOW_CHANGE_POST>(m_handlers, &OnRefresh);
    Register<PRO_POPUPMENU_CREATE_POST>(m_handlers, &OnPopupCreated);
    Register<PRO_POPUPMENU_DESTROY_PRE>(m_handlers, &OnPopupDestroyed);
}

CLcdProeDataImpl::~CLcdProeDataImpl() {
    CancelTimer();
    g_window = 0;
    for (const auto& [type, handler] : m_handlers) {
        ProError status = CQvxProNotification::Unset(type, handler);
        if (status != 0) {
            std::cout << "CQvxProNotification::Unset(" << type << ")status=" << status << std::endl;
        }
    }
    g_platform = nullptr;
}

void CLcdProeDataImpl::RefreshRequest() {
    CancelTimer();
    if (g_platform && g_platform->IsWindow(g_window)) {
        g_platform->Post(g_window, kMsgDataChanged, kDataChangedWParam, 0);
    }
}

}  // namespace qvx::lcd
