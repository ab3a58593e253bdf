// What the LCD manager's "configure" request shows: a message box with the plug-in's name and
// version, owned by the LCD window, brought to the front first.
#pragma once

#include "lcd/applet_platform.h"
#include "lcd/cad_interfaces.h"
#include "lcd/lcd_functor.h"

#include <string>

namespace qvx::lcd {

/// The plug-in's version as the about text shows it.
inline constexpr wchar_t kPluginVersion[] = L"2.4.1.14976";

class CLcdProeConfigureCallBack : public _Qvx::IOvkLcdFunctor, public _Qvx::IInstance {
public:
    explicit CLcdProeConfigureCallBack(WindowId window) : m_window(window) {}
    /// The argument is not used.
    void operator()(std::uint32_t) override;

    /// "Quorvex Plug-In for Pro/ENGINEER v. <version>, " and the maker's notice.
    static std::wstring AboutText();

private:
    WindowId m_window;
};

}  // namespace qvx::lcd
