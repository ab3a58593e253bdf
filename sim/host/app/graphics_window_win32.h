// The host's graphics window: a real window whose device context the plug-in finds as the
// current OpenGL one, the cursor over it, and its client pixels in the host's window units.
#pragma once

#include "sim/host/cad_model.h"
#include "support/win32_handles.h"

#include <optional>
#include <string>

namespace sim {

class CGraphicsWindow {
public:
    /// The client area's size in pixels: the host's 1000 x 843.75 units at 0.8 pixel each.
    static constexpr int kClientWidth = 800;
    static constexpr int kClientHeight = 675;

    CGraphicsWindow() = default;
    CGraphicsWindow(const CGraphicsWindow&) = delete;
    CGraphicsWindow& operator=(const CGraphicsWindow&) = delete;
    ~CGraphicsWindow() { Off(); }

    /// Creates the window and makes its device context the current one: by a real OpenGL
    /// context where the display driver offers pixel formats for windows, otherwise by the
    /// host's answer to the plug-in's wglGetCurrentDC (RouteCurrentDC). `how` says which.
    bool On(std::string& how);
    /// Releases the context and destroys the window; the plug-in then finds none.
    void Off();
    HWND Window() const { return m_window.Get(); }

    /// Moves the cursor to client pixel (x, y); false if the screen could not place it there.
    bool PlaceCursor(int x, int y) const;
    /// The cursor's position in window units (0..1000 across, 0..843.75 up), if over the window.
    std::optional<Point3> CursorUnits() const;

    /// Points `plugin`'s import of wglGetCurrentDC at a function of the host that asks opengl32
    /// first and, while no context is current, answers with the graphics window's device
    /// context when the window is on without one. False if the module has no such import.
    static bool RouteCurrentDC(HMODULE plugin);

private:
    bool MakeContextCurrent();

    ovklib::CScopedHandle<ovklib::WindowTraits> m_window;
    HDC m_dc = nullptr;
    HGLRC m_context = nullptr;
};

}  // namespace sim
