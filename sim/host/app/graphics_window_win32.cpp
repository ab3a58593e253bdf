// The host's graphics window. Wine's null display driver has no pixel formats for a window's
// device context (ChoosePixelFormat gives 0, wglMakeCurrent on it fails), so there the host
// answers the plug-in's wglGetCurrentDC itself, through the plug-in's import table; the
// plug-in's own lookup, WindowFromDC and the pointer wiggler run unchanged.
#include "graphics_window_win32.h"

#include "import_route_win32.h"

namespace sim {
namespace {

constexpr wchar_t kClassName[] = L"QvxHostGraphics";
// Top left of the window on the screen, chosen so that the whole client area lies on a
// 1024 x 768 screen.
constexpr int kLeft = 40;
constexpr int kTop = 30;

/// The device context the host hands out while the window is on without a real context.
HDC g_substituteDC = nullptr;

HDC WINAPI HostCurrentDC() {
    HDC dc = wglGetCurrentDC();
    return dc ? dc : g_substituteDC;
}

bool RegisterGraphicsClass() {
    WNDCLASSW wc{};
    wc.style = CS_OWNDC;  // one device context for the window's whole life
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = kClassName;
    return RegisterClassW(&wc) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

}  // namespace

bool CGraphicsWindow::On(std::string& how) {
    if (m_window) {
        how = "the graphics window is on already";
        return true;
    }
    if (!RegisterGraphicsClass()) return false;
    m_window.Reset(CreateWindowExW(0, kClassName, L"Graphics", WS_POPUP | WS_VISIBLE, kLeft, kTop,
                                   kClientWidth, kClientHeight, nullptr, nullptr,
                                   GetModuleHandleW(nullptr), nullptr));
    if (!m_window) return false;
    m_dc = GetDC(m_window.Get());
    if (MakeContextCurrent()) {
        how = "with a current OpenGL context";
    } else {
        g_substituteDC = m_dc;
        how = "without OpenGL for windows here: the host answers wglGetCurrentDC with its DC";
    }
    return true;
}

bool CGraphicsWindow::MakeContextCurrent() {
    PIXELFORMATDESCRIPTOR pfd{};
    pfd.nSize = sizeof pfd;
    pfd.nVersion = 1;
    pfd.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
    pfd.iPixelType = PFD_TYPE_RGBA;
    pfd.cColorBits = 24;
    pfd.cDepthBits = 16;
    int format = ChoosePixelFormat(m_dc, &pfd);
    if (format == 0 || !SetPixelFormat(m_dc, format, &pfd)) return false;
    m_context = wglCreateContext(m_dc);
    if (m_context && wglMakeCurrent(m_dc, m_context)) return true;
    if (m_context) wglDeleteContext(m_context);
    m_context = nullptr;
    return false;
}

void CGraphicsWindow::Off() {
    if (m_context) {
        wglMakeCurrent(nullptr, nullptr);
        wglDeleteContext(m_context);
        m_context = nullptr;
    }
    g_substituteDC = nullptr;
    if (m_dc) ReleaseDC(m_window.Get(), m_dc);
    m_dc = nullptr;
    m_window.Reset();
}

bool CGraphicsWindow::PlaceCursor(int x, int y) const {
    if (!m_window) return false;
    POINT screen{x, y};
    ClientToScreen(m_window.Get(), &screen);
    POINT now{};
    return SetCursorPos(screen.x, screen.y) && GetCursorPos(&now) && now.x == screen.x &&
           now.y == screen.y;
}

std::optional<Point3> CGraphicsWindow::CursorUnits() const {
    POINT p{};
    if (!m_window || !GetCursorPos(&p) || !ScreenToClient(m_window.Get(), &p)) return std::nullopt;
    return Point3{p.x * kWindowWidth / kClientWidth,
                  (kClientHeight - p.y) * kWindowHeight / kClientHeight, 0.0};
}

bool CGraphicsWindow::RouteCurrentDC(HMODULE plugin) {
    return RouteImport(plugin, "opengl32.dll", "wglGetCurrentDC",
                       reinterpret_cast<const void*>(&HostCurrentDC));
}

}  // namespace sim
