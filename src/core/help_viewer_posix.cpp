// The native build shows no help.
#include "core/help.h"

namespace qvx::core {

void ShowHtmlHelp(const std::wstring&) {}

}  // namespace qvx::core
