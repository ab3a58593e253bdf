// Tells the LCD window when the host's document may have changed: a model retrieved, a window
// made current, and notification 2 post the window a request to read again; popup menus only
// cancel (and, when one closes, re-arm) an idle timer whose end does nothing. The state is
// process-wide; one object holds it at a time.
#pragma once

#include "lcd/applet_platform.h"
#include "toolkit/pro_types.h"

#include <map>

namespace qvx::lcd {

class CLcdProeDataImpl {
public:
    /// Registers the five handlers; a refused registration is reported and costs only itself.
    CLcdProeDataImpl(WindowId window, IAppletPlatform& platform);
    CLcdProeDataImpl(const CLcdProeDataImpl&) = delete;
    CLcdProeDataImpl& operator=(const CLcdProeDataImpl&) = delete;
    /// Stops the timer, forgets the window and takes the handlers back.
    virtual ~CLcdProeDataImpl();

    /// Posts the window 0x8020 (wParam 1) when it still exists, after cancelling the timer.
    static void RefreshRequest();

private:
    std::map<ProNotifyType, ProError (*)()> m_handlers;
};

}  // namespace qvx::lcd
