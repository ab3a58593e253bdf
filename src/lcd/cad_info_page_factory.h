// The page the applet window shows, made for the window and the host's factory.
#pragma once

#include "lcd/applet_platform.h"
#include "lcd/lcd_page_interface.h"

#include <memory>

namespace qvx::lcd {

std::unique_ptr<ILcdPage> MakeCadInfoPage(WindowId window, std::shared_ptr<_Qvx::IFactory> factory);

}  // namespace qvx::lcd
