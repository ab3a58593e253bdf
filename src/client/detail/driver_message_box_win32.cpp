#include "client/oxapp/driver_message_box.h"

#include "client/detail/oxapp_shim.h"

namespace oxapp {

// The shim's wrapper loads the library if need be and never throws.
std::int32_t ShowDriverMessageBox(void* owner, const char* text, const char* caption,
                                  std::uint32_t type) {
    return OxMessageBox(owner, text, caption, type);
}

}  // namespace oxapp
