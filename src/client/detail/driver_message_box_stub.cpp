// TEMPORARY: replaced by the client's implementation at merge
#include "client/oxapp/driver_message_box.h"

#ifdef _WIN32
#include "client/detail/oxapp_shim.h"
#endif

namespace oxapp {

std::int32_t ShowDriverMessageBox(void* owner, const char* text, const char* caption,
                                  std::uint32_t type) {
#ifdef _WIN32
    return OxMessageBox(owner, text, caption, type);
#else
    (void)owner, (void)text, (void)caption, (void)type;
    return 0;
#endif
}

}  // namespace oxapp
