#include "lcd/ovk_lcd_connection.h"

#include "lcd/lm_lcd_library.h"
#include "support/boundary.h"
#include "support/os.h"

#include <algorithm>

namespace qvx::lcd {

COvkLcdImpl::~COvkLcdImpl() { Disconnect(); }

void COvkLcdImpl::OnSoftButtons(std::uint32_t mask) {
    _Qvx::IOvkLcdFunctor* functor = nullptr;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        m_buttons = mask;
        functor = m_buttonFunctor;
    }
    if (functor) (*functor)(mask);
}

std::uint32_t COvkLcdImpl::LastButtons() {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_buttons;
}

std::uint32_t COvkLcdImpl::Connect(const std::wstring& friendlyName, bool autostartable,
                                   const std::wstring& programPath) {
    if (m_holder.connection) return kConnectFailed;

    // A name no other applet of this program holds: the plain one first, then numbered.
    std::wstring name = friendlyName;
    auto claim = CAppletNameClaim::TryClaim(AppletClaimName(programPath, name));
    for (int n = 1; !claim; ++n) {
        name = NumberedAppletName(friendlyName, n);
        claim = CAppletNameClaim::TryClaim(AppletClaimName(programPath, name));
    }

    LmConnectContext context{};
    context.friendlyName = name.c_str();
    context.isPersistent = 1;
    context.isAutostartable = autostartable ? 1 : 0;
    context.onConfigure = &COvkLcdImpl::ConfigureThunk;
    context.configureContext = this;
    context.connection = kLmInvalidHandle;
    context.capabilities = m_deviceType == kLmDeviceColor ? 2 : 3;
    context.onNotify = &COvkLcdImpl::NotifyThunk;
    context.notifyContext = this;

    auto connection = std::make_unique<COvkLcdConnectionImpl>(*m_library);
    if (!connection->Initialize(context, this)) return kConnectFailed;
    m_holder.connection = std::move(connection);
    m_holder.nameClaim = std::move(claim);
    m_connectedName = name;
    // Pages made before the connection show on its outputs.
    for (const auto* list : {&m_colorPages, &m_monoPages}) {
        if (list->empty()) continue;
        if (CLCDOutput* output = OutputFor(list->front().get())) {
            if (!output->CurrentPage()) output->ShowPage(list->front().get(), false);
        }
    }
    return 0;
}

void COvkLcdImpl::Disconnect() {
    if (m_holder.connection) {
        m_holder.connection->Shutdown();
        m_holder.connection.reset();
    }
    m_holder.nameClaim.reset();
    m_connectedName.clear();
}

COvkLcdPage* COvkLcdImpl::CreatePage(int type) {
    std::unique_ptr<COvkLcdPage> page;
    PageList* list = nullptr;
    if (type == kColorPage) {
        page = std::make_unique<COvkColorLcdPageImpl>();
        list = &m_colorPages;
    } else if (type == kMonoPage) {
        page = std::make_unique<COvkMonoLcdPageImpl>();
        list = &m_monoPages;
    } else {
        return nullptr;
    }
    list->push_back(std::move(page));
    return list->back().get();
}

CLCDOutput* COvkLcdImpl::OutputFor(const COvkLcdPage* page) const {
    if (!page || !m_holder.connection) return nullptr;
    return m_holder.connection->Output(page->DeviceType());
}

bool COvkLcdImpl::RemovePage(COvkLcdPage* page) {
    for (PageList* list : {&m_colorPages, &m_monoPages}) {
        auto found = std::find_if(list->begin(), list->end(),
                                  [&](const auto& held) { return held.get() == page; });
        if (found == list->end()) continue;
        std::unique_ptr<COvkLcdPage> removed = std::move(*found);
        list->erase(found);
        CLCDOutput* output = OutputFor(removed.get());
        if (output && output->CurrentPage() == removed.get()) {
            output->ShowPage(list->empty() ? nullptr : list->front().get(), false);
        }
        return true;
    }
    return false;
}

bool COvkLcdImpl::ShowPage(COvkLcdPage* page, bool bringUp) {
    for (PageList* list : {&m_colorPages, &m_monoPages}) {
        bool ours = std::any_of(list->begin(), list->end(),
                                [&](const auto& held) { return held.get() == page; });
        if (!ours) continue;
        CLCDOutput* output = OutputFor(page);
        if (!output) return false;
        output->ShowPage(page, false);
        if (bringUp) Update();
        return true;
    }
    return false;
}

bool COvkLcdImpl::IsPageVisible(const COvkLcdPage* page) const {
    CLCDOutput* output = OutputFor(page);
    return output && page && output->CurrentPage() == page;
}

void COvkLcdImpl::Update() {
    if (IsConnected()) m_holder.connection->Update();
}

void COvkLcdImpl::RequestDevices() {
    if (!m_holder.connection) return;
    for (CLCDOutput* output : m_holder.connection->Outputs()) {
        // One device that fails must not keep the others from the request.
        qvx::CallAtBoundary("COvkLcdImpl::RequestDevices", [&] {
            if (output->IsOpened()) m_library->RequestDevice(output->Device());
        });
    }
}

void COvkLcdImpl::SetForeground(bool foreground) {
    if (!m_holder.connection) return;
    if (foreground) RequestDevices();
    for (CLCDOutput* output : m_holder.connection->Outputs()) {
        qvx::CallAtBoundary("COvkLcdImpl::SetForeground",
                            [&] { output->SetAsForeground(foreground); });
    }
}

void COvkLcdImpl::SetButtonCallback(_Qvx::IOvkLcdFunctor* functor) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_buttonFunctor = functor;
}
void COvkLcdImpl::SetConfigureCallback(_Qvx::IOvkLcdFunctor* functor) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_configureFunctor = functor;
}
void COvkLcdImpl::SetNotifyCallback(_Qvx::IOvkLcdFunctor* functor) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_notifyFunctor = functor;
}

_Qvx::IOvkLcdFunctor* COvkLcdImpl::Functor(_Qvx::IOvkLcdFunctor* const& slot) {
    std::lock_guard<std::mutex> guard(m_lock);
    return slot;
}

std::uint32_t QVX_LCD_CALL COvkLcdImpl::ConfigureThunk(std::int32_t, const wchar_t*,
                                                       void* context) {
    return qvx::CallAtBoundary("COvkLcdImpl::OnConfigure", std::uint32_t{0}, [&] {
        auto* self = static_cast<COvkLcdImpl*>(context);
        if (auto* functor = self->Functor(self->m_configureFunctor)) (*functor)(0);
        return std::uint32_t{0};
    });
}

std::uint32_t QVX_LCD_CALL COvkLcdImpl::NotifyThunk(std::int32_t, void* context, std::uint32_t code,
                                                    std::uint32_t, std::uint32_t) {
    return qvx::CallAtBoundary("COvkLcdImpl::OnNotify", std::uint32_t{0}, [&] {
        auto* self = static_cast<COvkLcdImpl*>(context);
        if (auto* functor = self->Functor(self->m_notifyFunctor)) (*functor)(code);
        return std::uint32_t{0};
    });
}

COvkLcdConnection::COvkLcdConnection(std::wstring name)
    : m_impl(std::make_unique<COvkLcdImpl>(SystemLcdLibrary())), m_name(std::move(name)) {}

COvkLcdConnection::~COvkLcdConnection() = default;

COvkLcdConnection& COvkLcdConnection::Instance() {
    // Held, so that later calls build no name: destructors reach the connection through here,
    // and an allocation failing in one would end the process.
    static COvkLcdConnection& instance = Instance(L"Quorvex Applet");
    return instance;
}

COvkLcdConnection& COvkLcdConnection::Instance(const std::wstring& name) {
    static COvkLcdConnection instance(name);
    return instance;
}

bool COvkLcdConnection::Connect(bool autostartable) {
    return m_impl->Connect(m_name, autostartable, qvx::os::ExecutablePath()) == 0;
}

CLCDBitmap* COvkLcdConnection::CreateBitmap(COvkLcdPage* page, int width, int height) {
    return page ? page->CreateBitmap(width, height) : nullptr;
}

CLCDText* COvkLcdConnection::CreateText(COvkLcdPage* page, int points, int width, int weight,
                                        int lines) {
    return page ? page->CreateText(points, width, weight, lines) : nullptr;
}

}  // namespace qvx::lcd
