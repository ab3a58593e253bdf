#include "client/oxapp/driver_message_box.h"

namespace oxapp {

// No driver library exists in the native build.
std::int32_t ShowDriverMessageBox(void*, const char*, const char*, std::uint32_t) { return 0; }

}  // namespace oxapp
