// CLCDOutput: one device of the panel as an applet sees it: its handle (-1 while closed), the
// page it shows, its surface, and whether the applet asks to be in the foreground on it.
#pragma once

#include "lcd/widgets/lcd_collection.h"
#include "lcd/widgets/lcd_gfx.h"
#include "lcd/widgets/lcd_library.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace qvx::lcd {

class CLCDPage;

class CLCDOutput : public CLCDCollection {
public:
    CLCDOutput(ILcdLibrary& library, std::int32_t deviceType, std::unique_ptr<CLCDGfxBase> gfx);
    ~CLCDOutput() override;

    std::int32_t DeviceType() const { return m_deviceType; }
    /// Opens the device of this output's type for `connection`; soft buttons then come to
    /// `onButtons`. The remembered foreground flag goes to the new device. False when the
    /// library refused; the output stays closed.
    bool Open(std::int32_t connection, LmSoftButtonsProc onButtons, void* context);
    /// Tells OnClosing, then closes the device; nothing when closed.
    void Close();
    bool IsOpened() const { return m_device != kLmInvalidHandle; }
    std::int32_t Device() const { return m_device; }

    /// Makes `page` current (null: none); with `bringUp` draws it at once.
    void ShowPage(CLCDPage* page, bool bringUp);
    CLCDPage* CurrentPage() const { return m_page; }
    /// Draws the current page and sends the frame, if there is a page, an open device and
    /// the output is not paused. A frame equal to the last one sent to the same device is not
    /// sent again, so that repeated updates without a change cost the manager nothing. True
    /// when a frame went to the library.
    bool Draw();

    void SetAsForeground(bool foreground);
    bool IsForeground() const { return m_foreground; }
    void SetPriority(std::uint32_t priority) { m_priority = priority; }
    void Pause(bool paused) { m_paused = paused; }
    CLCDGfxBase& Gfx() { return *m_gfx; }
    /// Frames sent since the output was made.
    std::uint64_t FramesSent() const { return m_framesSent; }

protected:
    /// Called before the device closes.
    virtual void OnClosing() {}

private:
    ILcdLibrary& m_library;
    std::int32_t m_deviceType;
    std::unique_ptr<CLCDGfxBase> m_gfx;
    std::int32_t m_device = kLmInvalidHandle;
    bool m_foreground = false;
    bool m_paused = false;
    std::uint32_t m_priority = kLmPriorityNormal;
    CLCDPage* m_page = nullptr;
    std::uint64_t m_framesSent = 0;
    std::vector<std::uint8_t> m_lastFrame;  ///< empty: nothing sent to this device yet
};

}  // namespace qvx::lcd
