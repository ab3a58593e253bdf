// The system's help viewer for compiled help files.
#include "core/help.h"

#include "support/windows_api.h"

#include <htmlhelp.h>

namespace qvx::core {

void ShowHtmlHelp(const std::wstring& url) { HtmlHelpW(nullptr, url.c_str(), HH_DISPLAY_TOPIC, 0); }

}  // namespace qvx::core
