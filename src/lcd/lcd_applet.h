// Starting the plug-in's LCD applet: the window made with the host's factory and the
// application's name, created, and handed back; null when it could not be made.
#pragma once

#include "lcd/cad_info_window.h"

#include <memory>
#include <string>

namespace qvx::lcd {

std::shared_ptr<CLcdCadInfoWindow> StartLcdApplet(std::shared_ptr<_Qvx::IFactory> factory,
                                                  const std::wstring& name);

}  // namespace qvx::lcd
