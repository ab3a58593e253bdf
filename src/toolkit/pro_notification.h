// One process-wide multiplexer of host notifications: every user of a notification type adds
// its handler here, and the host sees one callback per type. Everything runs on the host's
// main thread (notifications arrive inside host calls), so the map is not locked. A handler
// must not Set or Unset the type being delivered: the delivery walks the live list.
#pragma once

#include "toolkit/pro_types.h"

#include <list>

/// The host notification types the plug-in listens to.
inline constexpr ProNotifyType PRO_MDL_RETRIEVE_POST = 18;
inline constexpr ProNotifyType PRO_WINDOW_CHANGE_POST = 24;
inline constexpr ProNotifyType PRO_POPUPMENU_CREATE_POST = 72;
inline constexpr ProNotifyType PRO_POPUPMENU_DESTROY_PRE = 73;

class CQvxProNotification {
public:
    /// A handler of the form without arguments: 0, or a status for the host.
    using Handler = ProError (*)();

    /// Adds `handler` to the handlers of `T`. The first handler of a type registers the one
    /// callback of that type with the host and returns the host's status; later ones append
    /// and return 0. A type whose registration failed keeps its list all the same, so its next
    /// Set reports success although the host has no callback: that is kept on purpose.
    template <ProNotifyType T>
    static ProError Set(Handler handler) {
        return SetCallback(T, handler, &ProNotifyFunction<T>);
    }

    /// Removes the first occurrence of `handler` from `type`'s list and returns 0. The host's
    /// callback stays registered until the plug-in is unloaded, also when the list runs out;
    /// it then finds nothing to call.
    static ProError Unset(ProNotifyType type, Handler handler);

    /// The callback the host calls for `T`: every handler in the order of registration, each
    /// exception caught and reported, the last non-zero status the result.
    template <ProNotifyType T>
    static ProError ProNotifyFunction() {
        return Deliver(T);
    }

    /// The handlers of `type` in order; empty when the type was never set (for tests).
    static std::list<Handler> Handlers(ProNotifyType type);
    /// Forgets every type, as the unload of the plug-in does; for tests that load the
    /// plug-in again in one process after the host dropped its callbacks.
    static void ForgetAll();

private:
    static ProError SetCallback(ProNotifyType type, Handler handler, ProFunction callback);
    static ProError Deliver(ProNotifyType type) noexcept;
};
