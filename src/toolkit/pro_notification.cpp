#include "toolkit/pro_notification.h"

#include "support/boundary.h"
#include "toolkit/pro_toolkit.h"

#include <algorithm>
#include <iostream>
#include <map>

namespace {

using HandlerMap = std::map<ProNotifyType, std::list<CQvxProNotification::Handler>>;

/// Lives until the plug-in is unloaded, like the host's registrations it mirrors.
HandlerMap& Map() {
    static HandlerMap map;
    return map;
}

}  // namespace

ProError CQvxProNotification::SetCallback(ProNotifyType type, Handler handler,
                                          ProFunction callback) {
    HandlerMap& map = Map();
    if (auto found = map.find(type); found != map.end()) {
        found->second.push_back(handler);
        return PRO_TK_NO_ERROR;
    }
    map.emplace(type, std::list<Handler>{handler});
    ProError status = ProNotificationSet(type, callback);
    if (status != PRO_TK_NO_ERROR) {
        // Removes the entry only when it cannot be found, which never happens for one just
        // made: the list stays and the next Set of the type appends to it.
        if (map.find(type) == map.end()) map.erase(type);
    }
    return status;
}

ProError CQvxProNotification::Unset(ProNotifyType type, Handler handler) {
    HandlerMap& map = Map();
    auto found = map.find(type);
    if (found == map.end()) return PRO_TK_NO_ERROR;
    std::list<Handler>& handlers = found->second;
    auto at = std::find(handlers.begin(), handlers.end(), handler);
    if (at == handlers.end()) return PRO_TK_NO_ERROR;
    // The type stays in the map and the host's callback stays registered, also when this was
    // the last handler: a later delivery finds an empty list and returns 0.
    handlers.erase(at);
    return PRO_TK_NO_ERROR;
}

ProError CQvxProNotification::Deliver(ProNotifyType type) noexcept {
    return qvx::CallAtBoundary("CQvxProNotification::ProNotifyFunction", ProError{0}, [type] {
        HandlerMap& map = Map();
        auto found = map.find(type);
        if (found == map.end()) return ProError{0};
        ProError result = 0;
        for (Handler handler : found->second) {
            try {
                ProError status = handler();
                if (status != 0) {
                    std::cout << "CQvxProNotification::ProNotifyFunction() status=" << status
                              << std::endl;
                    result = status;
                }
            } catch (...) {
                std::cout << "CQvxProNotification::ProNotifyFunction() exception\n" << std::flush;
            }
        }
        return result;
    });
}

std::list<CQvxProNotification::Handler> CQvxProNotification::Handlers(ProNotifyType type) {
    auto found = Map().find(type);
    return found == Map().end() ? std::list<Handler>{} : found->second;
}

void CQvxProNotification::ForgetAll() { Map().clear(); }
