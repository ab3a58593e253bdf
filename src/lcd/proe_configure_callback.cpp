#include "lcd/proe_configure_callback.h"

namespace qvx::lcd {

std::wstring CLcdProeConfigureCallBack::AboutText() {
    return std::wstring(L"Quorvex Plug-In for Pro/ENGINEER v. ") + kPluginVersion +
           L", \n\nCopyright \u00a9 Quorvex. All rights reserved.\n\n";
}

}  // namespace qvx::lcd
