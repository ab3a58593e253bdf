// The driver's message box, shown by the driver above a window of the caller's.
#pragma once

#include <cstdint>

namespace oxapp {
std::int32_t ShowDriverMessageBox(void* owner, const char* text, const char* caption,
                                  std::uint32_t type);
}
