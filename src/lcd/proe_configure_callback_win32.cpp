// The about box on Win32: the LCD window is brought to the front (attaching to the foreground
// thread's input when that is another thread, as the system demands) before the box opens.
#include "lcd/proe_configure_callback.h"

#include "support/windows_api.h"

namespace qvx::lcd {

void CLcdProeConfigureCallBack::operator()(std::uint32_t) {
    const std::wstring text = AboutText();
    HWND window = reinterpret_cast<HWND>(m_window);
    DWORD own = GetWindowThreadProcessId(window, nullptr);
    DWORD front = GetWindowThreadProcessId(GetForegroundWindow(), nullptr);
    if (own != front) {
        AttachThreadInput(own, front, TRUE);
        SetForegroundWindow(window);
        Sleep(100);
        AttachThreadInput(own, front, FALSE);
    } else {
        SetForegroundWindow(window);
    }
    MessageBoxW(window, text.c_str(), L"About: QvxProEngineer (Tessmotion Plug-In)", /*uType=*/0);
}

}  // namespace qvx::lcd
