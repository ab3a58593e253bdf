#include "nav/driver_notice.h"

#include "client/oxapp/driver_message_box.h"
#include "nav/mouse_tracking.h"
#include "support/os.h"

namespace qvx::nav {
namespace {

DriverNoticeSink& Sink() {
    static DriverNoticeSink sink;
    return sink;
}

}  // namespace

void ShowDriverNotice(const std::wstring& text, const char* caption, std::uint32_t type) {
    if (Sink()) {
        Sink()(text, caption, type);
        return;
    }
    // The driver's message box takes narrow text; names of saved views are UTF-8.
    oxapp::ShowDriverMessageBox(FindHostGraphicsWindow(), os::NarrowUtf8(text).c_str(), caption,
                                type);
}

void SetDriverNoticeSink(DriverNoticeSink sink) { Sink() = std::move(sink); }

}  // namespace qvx::nav
