#include "lcd/cad_info_window.h"

namespace qvx::lcd {
namespace {

/// The page could not be laid out; caught by the connect attempt itself.
struct CPageCreationError {
    std::wstring text;
};

}  // namespace

CLcdCadInfoWindow::CLcdCadInfoWindow(std::shared_ptr<_Qvx::IFactory> factory,
                                     const std::wstring& name, IAppletPlatform& platform,
                                     PageMaker pageMaker)
    : CLcdAppletWindowT(name, platform),
      m_factory(std::move(factory)),
      m_pageName(name),
      m_pageMaker(std::move(pageMaker)) {}

CLcdCadInfoWindow::~CLcdCadInfoWindow() {
    bool hasWindow = Window() && Platform().IsWindow(Window());
    if (hasWindow) {
        Platform().StopTimer(Window(), kRetryTimer);
        Platform().StopTimer(Window(), kForegroundTimer);
    }
    DestroyPage();
    if (m_connected) {
        m_connected = false;
        COvkLcdConnection::Instance().Disconnect();
    }
    COvkLcdConnection& connection = COvkLcdConnection::Instance();
    connection.SetButtonCallback(nullptr);
    connection.SetConfigureCallback(nullptr);
    connection.SetNotifyCallback(nullptr);
    m_buttonCallback.reset();
    m_notifyCallback.reset();
    m_configureCallback.reset();
    if (Window() && Platform().IsWindow(Window())) Platform().CloseWindow(Window());
    ForgetWindow();
}

bool CLcdCadInfoWindow::Create() {
    if (!CreateHiddenWindow()) return false;
    COvkLcdConnection& connection = COvkLcdConnection::Instance();
    m_buttonCallback = std::make_unique<CQvxButtonCallBack>(Platform(), Window());
    m_notifyCallback = std::make_unique<CQvxNotifyCallBack>(Platform(), Window());
    connection.SetButtonCallback(m_buttonCallback.get());
    connection.SetNotifyCallback(m_notifyCallback.get());
    if (m_factory) {
        m_configureCallback.reset(m_factory->CreateInstance(_Qvx::kCidNotifyCallback, Window()));
        connection.SetConfigureCallback(
            dynamic_cast<_Qvx::IOvkLcdFunctor*>(m_configureCallback.get()));
    }
    if (!TryConnect()) Platform().StartTimer(Window(), kRetryTimer, kRetryMs);
    return true;
}

bool CLcdCadInfoWindow::TryConnect() {
    if (m_connected) return true;
    // Without the manager's window there is nothing to talk to: the library is not touched.
    if (!Platform().ManagerRunning()) return false;
    COvkLcdConnection& connection = COvkLcdConnection::Instance();
    m_connected = connection.Connect(/*autostartable=*/false);
    if (!m_connected) return false;
    if (m_buttonCallback) m_buttonCallback->Reset();
    connection.RequestDevices();
    try {
        m_page = m_pageMaker(Window(), m_factory);
        if (!m_page || !m_page->Create(m_pageName)) {
            throw CPageCreationError{L"Error creating page."};
        }
        m_page->Show();
    } catch (...) {
        // The connection stays up without a page.
        DestroyPage();
    }
    return true;
}

void CLcdCadInfoWindow::TearDown() {
    DestroyPage();
    if (m_connected) {
        m_connected = false;
        COvkLcdConnection::Instance().Disconnect();
    }
    Platform().StartTimer(Window(), kRetryTimer, kRetryMs);
}

void CLcdCadInfoWindow::RunButton(std::uintptr_t button) {
    switch (button) {
        case kButtonLeft:
            m_page->OnLeft();
            break;
        case kButtonRight:
            m_page->OnRight();
            break;
        case kButtonOk:
            m_page->OnOk();
            break;
        case kButtonCancel:
            m_page->OnCancel();
            break;
        case kButtonUp:
            m_page->OnUp();
            break;
        case kButtonDown:
            m_page->OnDown();
            break;
        default:
            break;  // no button, or more than one at once
    }
}

bool CLcdCadInfoWindow::ProcessMessage(std::uint32_t message, std::uintptr_t wParam, std::intptr_t,
                                       std::intptr_t& result) {
    switch (message) {
        case kMsgNotification:
            if (wParam != kLmNotifyCloseConnection) return false;
            TearDown();
            result = 0;
            return true;
        case kMsgDataChanged:
            if (wParam != 1) return false;
            if (m_page) {
                if (auto* document = dynamic_cast<_Qvx::ICadDocument*>(m_page->Data())) {
                    document->Update();
                }
                m_page->Refresh();
                COvkLcdConnection::Instance().SetForeground(true);
                m_holdingForeground = true;
                Platform().StartTimer(Window(), kForegroundTimer, kForegroundMs);
            }
            result = 0;
            return true;
        case kMsgButtonReleased:
            result = 0;
            return true;
        case kMsgButtonPressed:
            if (m_page) RunButton(wParam);
            // Each press while the panel is held gives the user another 5 s; a press alone
            // does not take the panel.
            if (m_holdingForeground)
                Platform().StartTimer(Window(), kForegroundTimer, kForegroundMs);
            return false;
        case kMsgTimer:
            if (wParam == kRetryTimer) {
                if (TryConnect()) Platform().StopTimer(Window(), kRetryTimer);
            } else if (wParam == kForegroundTimer) {
                m_holdingForeground = false;
                Platform().StopTimer(Window(), kForegroundTimer);
                COvkLcdConnection::Instance().SetForeground(false);
            } else {
                return false;
            }
            result = 0;
            return true;
        default:
            return false;
    }
}

}  // namespace qvx::lcd
