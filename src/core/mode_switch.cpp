#include "core/mode_switch.h"

#include "support/logfile.h"
#include "toolkit/pro_notification.h"
#include "toolkit/pro_toolkit.h"
#include "toolkit/undostack_bypass.h"

#include <iostream>
#include <mutex>
#include <sstream>

namespace {

std::mutex g_creation;
/// The one tracker of the process, published by the first Connect.
std::weak_ptr<CQvxModeSwitchImpl> g_tracker;

/// The host still calls these after the tracker is gone (its callbacks stay registered until
/// the plug-in is unloaded); they then do nothing.
template <ProNotifyType T>
ProError OnNotification() {
    if (std::shared_ptr<CQvxModeSwitchImpl> tracker = g_tracker.lock()) tracker->OnProNotify(T);
    return 0;
}

template <ProNotifyType T>
void SetListener(const char* name) {
    ProError status = CQvxProNotification::Set<T>(&OnNotification<T>);
    if (status != 0) {
        std::cout << "CQvxProNotification::Set<" << name << "> status=" << status << std::endl;
    }
}

}  // namespace

CQvxModeSwitchImpl::~CQvxModeSwitchImpl() {
    std::cout << "CQvxModeSwitchImpl::~CQvxModeSwitchImpl()\n" << std::flush;
}

void CQvxModeSwitchImpl::InitializeListeners() {
    std::unique_ptr<CQvxLogfile> log;
    try {
        log = std::make_unique<CQvxLogfile>(L"qvxcreo.log");
        SetListener<PRO_POPUPMENU_DESTROY_PRE>("PRO_POPUPMENU_DESTROY_PRE");
        SetListener<PRO_POPUPMENU_CREATE_POST>("PRO_POPUPMENU_CREATE_POST");
        SetListener<PRO_WINDOW_CHANGE_POST>("PRO_WINDOW_CHANGE_POST");
        SetListener<PRO_MDL_RETRIEVE_POST>("PRO_MDL_RETRIEVE_POST");
    } catch (...) {
        if (log) {
            std::ostringstream message;
            message << "CQvxModeSwitch::CQvxModeSwitchImpl::InitializeListeners Exception\n";
            log->Write(message.str());
        }
    }
}

void CQvxModeSwitchImpl::OnProNotify(ProNotifyType type) {
    std::cout << "CQvxModeSwitch::CQvxModeSwitchImpl::OnProNotify (type=" << type << ")\n"
              << std::flush;
    if (type == PRO_POPUPMENU_DESTROY_PRE) return;
    if (type != PRO_POPUPMENU_CREATE_POST && type != PRO_MDL_RETRIEVE_POST &&
        type != PRO_WINDOW_CHANGE_POST) {
        return;
    }
    CQvxUndostackClearBypass bypass(true);
    ProMode mode = PRO_MODE_UNUSED;  // also what a failed query leaves
    ProBoolean active = 0;
    ProSectionIsActive(&active);
    // A sketch section open inside a part or an assembly counts as the sketcher, whatever the
    // host's own mode says. Neither status is examined: the values set before stand.
    if (active == 1) {
        mode = PRO_MODE_SKETCHER;
    } else {
        ProModeCurrentGet(&mode);
    }
    // The signal is raised outside the bypass.
    bypass.End();
    SetMode(mode);
}

void CQvxModeSwitchImpl::SetMode(ProMode mode) {
    if (mode == m_mode) return;
    m_mode = mode;
    m_signal(mode);
}

boost::signals2::connection CQvxModeSwitch::Connect(const Slot& slot) {
    if (!m_impl) {
        std::lock_guard<std::mutex> lock(g_creation);
        m_impl = g_tracker.lock();
        if (!m_impl) {
            m_impl = std::make_shared<CQvxModeSwitchImpl>();
            g_tracker = m_impl;
            m_impl->InitializeListeners();
        }
    }
    boost::signals2::connection connection = m_impl->Signal().connect(slot);
    if (slot) slot(m_impl->Mode());
    return connection;
}
