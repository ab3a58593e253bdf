#include "lcd/widgets/lcd_connection.h"

#include "support/boundary.h"

#include <chrono>
#include <thread>

namespace qvx::lcd {

CLCDConnection::CLCDConnection(ILcdLibrary& library) : m_library(library) {
    m_context.connection = kLmInvalidHandle;
    m_gfxFactory = [](std::int32_t type) {
        return type == kLmDeviceColor ? CreateColorGfx() : CreateMonoGfx();
    };
}

CLCDConnection::~CLCDConnection() { Shutdown(); }

bool CLCDConnection::Initialize(const LmConnectContext& context, ILcdSoftButtonSink* buttons) {
    if (m_userCounted) return false;
    std::uint32_t caps = context.capabilities;
    if (caps == 0 || (caps & kLmDeviceMono)) {
        m_outputs.push_back(
            std::make_unique<CLCDOutput>(m_library, kLmDeviceMono, m_gfxFactory(kLmDeviceMono)));
    }
    if (caps & kLmDeviceColor) {
        m_outputs.push_back(
            std::make_unique<CLCDOutput>(m_library, kLmDeviceColor, m_gfxFactory(kLmDeviceColor)));
    }
    if (m_library.Init() != 0) {
        m_outputs.clear();
        return false;
    }
    m_userCounted = true;
    m_buttons = buttons;
    m_context = context;
    m_friendlyName = context.friendlyName ? context.friendlyName : L"";
    m_context.friendlyName = m_friendlyName.c_str();
    if (!m_context.onConfigure) m_context.onConfigure = &CLCDConnection::DefaultConfigure;
    m_context.connection = kLmInvalidHandle;
    if (!Connect()) {
        Shutdown();
        return false;
    }
    // The manager announces the devices right after the connection; give it a moment so
    // that the first update already finds them.
    if (m_settleMs) std::this_thread::sleep_for(std::chrono::milliseconds(m_settleMs));
    Update();
    return true;
}

void CLCDConnection::Shutdown() {
    Disconnect();
    m_outputs.clear();
    m_buttons = nullptr;
    if (m_userCounted) {
        m_userCounted = false;
        m_library.DeInit();
    }
}

bool CLCDConnection::Connect() {
    m_context.connection = kLmInvalidHandle;
    if (m_library.Connect(m_context) != 0) {
        m_context.connection = kLmInvalidHandle;
        return false;
    }
    return IsConnected();
}

void CLCDConnection::Disconnect() {
    if (!IsConnected()) return;
    for (auto& output : m_outputs) output->Close();
    m_library.Disconnect(m_context.connection);
    m_context.connection = kLmInvalidHandle;
}

void CLCDConnection::Update() {
    if (!IsConnected()) return;
    Drain();
    if (!IsConnected()) return;
    for (auto& output : m_outputs) output->Draw();
}

void CLCDConnection::OnDeviceArrival(std::int32_t type) {
    CLCDOutput* output = Output(type);
    if (output && IsConnected()) {
        output->Open(m_context.connection, &CLCDConnection::SoftButtonsThunk, this);
    }
}

void CLCDConnection::OnDeviceRemoval(std::int32_t type) {
    if (CLCDOutput* output = Output(type)) output->Close();
}

void CLCDConnection::OnNotification(std::uint32_t code, std::uint32_t param1) {
    switch (code) {
        case kLmNotifyDeviceArrival:
            OnDeviceArrival(static_cast<std::int32_t>(param1));
            break;
        case kLmNotifyDeviceRemoval:
            OnDeviceRemoval(static_cast<std::int32_t>(param1));
            break;
        case kLmNotifyAppletDisabled:
            OnAppletDisabled();
            break;
        case kLmNotifyAppletEnabled:
            OnAppletEnabled();
            break;
        default:
            break;
    }
}

void CLCDConnection::OnCallback(std::int32_t /*device*/, std::uint32_t mask) {
    if (m_buttons) m_buttons->OnSoftButtons(mask);
}

CLCDOutput* CLCDConnection::Output(std::int32_t deviceType) const {
    for (const auto& output : m_outputs) {
        if (output->DeviceType() == deviceType) return output.get();
    }
    return nullptr;
}

std::vector<CLCDOutput*> CLCDConnection::Outputs() const {
    std::vector<CLCDOutput*> outputs;
    for (const auto& output : m_outputs) outputs.push_back(output.get());
    return outputs;
}

std::uint32_t QVX_LCD_CALL CLCDConnection::SoftButtonsThunk(std::int32_t device,
                                                            std::uint32_t buttons, void* context) {
    return qvx::CallAtBoundary("CLCDConnection::OnCallback", std::uint32_t{0}, [&] {
        static_cast<CLCDConnection*>(context)->OnCallback(device, buttons);
        return std::uint32_t{0};
    });
}

std::uint32_t QVX_LCD_CALL CLCDConnection::DefaultConfigure(std::int32_t, const wchar_t*, void*) {
    return 0;
}

}  // namespace qvx::lcd
