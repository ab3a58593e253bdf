#include "lcd/widgets/lcd_output.h"

#include "lcd/widgets/lcd_page.h"
#include "support/main_loop.h"

#include <algorithm>

namespace qvx::lcd {

CLCDOutput::CLCDOutput(ILcdLibrary& library, std::int32_t deviceType,
                       std::unique_ptr<CLCDGfxBase> gfx)
    : m_library(library), m_deviceType(deviceType), m_gfx(std::move(gfx)) {
    if (m_gfx) m_gfx->Initialize();
}

CLCDOutput::~CLCDOutput() { Close(); }

bool CLCDOutput::Open(std::int32_t connection, LmSoftButtonsProc onButtons, void* context) {
    if (IsOpened()) return true;
    LmOpenContext open{};
    open.connection = connection;
    open.deviceType = m_deviceType;
    open.onSoftButtons = onButtons;
    open.softButtonsContext = context;
    open.device = kLmInvalidHandle;
    if (m_library.OpenByType(open) != 0 || open.device == kLmInvalidHandle) return false;
    m_device = open.device;
    m_lastFrame.clear();
    if (m_foreground) m_library.SetAsForeground(m_device, true);
    return true;
}

void CLCDOutput::Close() {
    if (!IsOpened()) return;
    OnClosing();
    m_library.Close(m_device);
    m_device = kLmInvalidHandle;
}

void CLCDOutput::ShowPage(CLCDPage* page, bool bringUp) {
    m_page = page;
    if (bringUp) Draw();
}

bool CLCDOutput::Draw() {
    if (!m_page || !IsOpened() || m_paused || !m_gfx) return false;
    if (!m_gfx->BeginDraw()) return false;
    m_page->OnUpdate(static_cast<std::uint32_t>(qvx::MainLoop().NowMs()));
    m_page->OnDraw(*m_gfx);
    m_gfx->EndDraw();
    const LmBitmapHeader* bitmap = m_gfx->Bitmap();
    if (!bitmap) return false;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(bitmap);
    std::size_t size =
        bitmap->format == kLmBitmapColor ? sizeof(LmBitmapColor) : sizeof(LmBitmapMono);
    if (m_lastFrame.size() == size && std::equal(bytes, bytes + size, m_lastFrame.begin())) {
        return false;
    }
    // A failed send is left alone, the library's next notification tells what happened;
    // only a frame that arrived counts as shown.
    if (m_library.UpdateBitmap(m_device, *bitmap, m_priority) == 0) {
        m_lastFrame.assign(bytes, bytes + size);
    } else {
        m_lastFrame.clear();
    }
    ++m_framesSent;
    return true;
}

void CLCDOutput::SetAsForeground(bool foreground) {
    m_foreground = foreground;
    if (IsOpened()) m_library.SetAsForeground(m_device, foreground);
}

}  // namespace qvx::lcd
