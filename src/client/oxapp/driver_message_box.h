// The driver's own message box, for notices that belong to the device rather than the host.
#pragma once

#include <cstdint>

namespace oxapp {

/// Shows `text` under `caption` in the driver's message box, owned by the window `owner`;
/// `type` takes the system's message box flags. Returns the driver's answer, 0 when there is
/// no driver to ask. Never throws.
std::int32_t ShowDriverMessageBox(void* owner, const char* text, const char* caption,
                                  std::uint32_t type);

}  // namespace oxapp
