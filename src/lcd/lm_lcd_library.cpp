#include "lcd/lm_lcd_library.h"

namespace qvx::lcd {

CLmLcdLibrary::CLmLcdLibrary(std::unique_ptr<ILmLibraryLoader> loader)
    : m_loader(std::move(loader)) {}

CLmLcdLibrary::~CLmLcdLibrary() {
    if (m_table) m_loader->Unload();
}

std::uint32_t CLmLcdLibrary::WrapInit() {
    if (m_table) return kLmAlreadyInitialized;
    m_table = m_loader->Load();
    if (!m_table) return kLmLibraryUnavailable;
    auto init = Slot<LmInitFn>(kLmInit);
    std::uint32_t status = init ? init() : kLmLibraryUnavailable;
    if (status != 0) {
        m_table = nullptr;
        m_loader->Unload();
    }
    return status;
}

std::uint32_t CLmLcdLibrary::WrapDeInit() {
    if (!m_table) return kLmNotStarted;
    auto deinit = Slot<LmDeInitFn>(kLmDeInit);
    std::uint32_t status = deinit ? deinit() : 0;
    m_table = nullptr;
    m_loader->Unload();
    return status;
}

std::uint32_t CLmLcdLibrary::Init() {
    if (m_users.fetch_add(1) != 0) return 0;
    std::uint32_t status = WrapInit();
    if (status == 0 || status == kLmAlreadyInitialized) return 0;
    m_users.fetch_sub(1);
    return status;
}

std::uint32_t CLmLcdLibrary::DeInit() {
    int before = m_users.load();
    // Never below zero: a count out without a count in is ignored.
    while (before > 0 && !m_users.compare_exchange_weak(before, before - 1)) {
    }
    if (before != 1) return 0;
    return WrapDeInit();
}

// Each wrapper: 1062 while the library is not up, else what the library's function says.
std::uint32_t CLmLcdLibrary::Connect(LmConnectContext& context) {
    auto fn = Slot<LmConnectFn>(kLmConnect);
    return fn ? fn(&context) : kLmNotStarted;
}
std::uint32_t CLmLcdLibrary::Disconnect(std::int32_t connection) {
    auto fn = Slot<LmDisconnectFn>(kLmDisconnect);
    return fn ? fn(connection) : kLmNotStarted;
}
std::uint32_t CLmLcdLibrary::Open(LmOpenContext& context) {
    auto fn = Slot<LmOpenFn>(kLmOpen);
    return fn ? fn(&context) : kLmNotStarted;
}
std::uint32_t CLmLcdLibrary::OpenByType(LmOpenContext& context) {
    auto fn = Slot<LmOpenFn>(kLmOpenByType);
    return fn ? fn(&context) : kLmNotStarted;
}
std::uint32_t CLmLcdLibrary::Close(std::int32_t device) {
    auto fn = Slot<LmCloseFn>(kLmClose);
    return fn ? fn(device) : kLmNotStarted;
}
std::uint32_t CLmLcdLibrary::UpdateBitmap(std::int32_t device, const LmBitmapHeader& bitmap,
                                          std::uint32_t priority) {
    auto fn = Slot<LmUpdateBitmapFn>(kLmUpdateBitmap);
    return fn ? fn(device, &bitmap, priority) : kLmNotStarted;
}
std::uint32_t CLmLcdLibrary::SetAsForeground(std::int32_t device, bool foreground) {
    auto fn = Slot<LmSetAsForegroundFn>(kLmSetAsLcdForegroundApp);
    return fn ? fn(device, foreground ? 1 : 0) : kLmNotStarted;
}
std::uint32_t CLmLcdLibrary::RequestDevice(std::int32_t device) {
    auto fn = Slot<LmRequestDeviceFn>(kLmRequestDevice);
    return fn ? fn(device) : kLmNotStarted;
}

CLmLcdLibrary& SystemLcdLibrary() {
    static CLmLcdLibrary library(CreateSystemLoader());
    return library;
}

}  // namespace qvx::lcd
