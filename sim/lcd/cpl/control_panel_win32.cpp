// A stand-in of the LCD manager's control panel applet: when the shell starts it, it writes
// the file named by QVX_LCD_CPL_MARK and declines to open, so a scenario can see that the
// applet's menu button ran the control panel and nothing stays open.
#include "support/windows_api.h"

#include <cpl.h>

#include <cstdio>

extern "C" __declspec(dllexport) LONG APIENTRY CPlApplet(HWND, UINT message, LPARAM, LPARAM) {
    if (message != CPL_INIT) return 0;
    wchar_t mark[MAX_PATH] = {};
    if (GetEnvironmentVariableW(L"QVX_LCD_CPL_MARK", mark, MAX_PATH)) {
        if (std::FILE* file = _wfopen(mark, L"wb")) {
            std::fputs("control panel opened\n", file);
            std::fclose(file);
        }
    }
    return FALSE;
}
