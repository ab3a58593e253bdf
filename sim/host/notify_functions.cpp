// The simulated host's notifications and mode: one registered callback per notification type,
// raised by the session where the host would raise it, and the mode and sketch state the
// session holds.
#include "sim/host/host_entry.h"
#include "sim/host/session.h"

#include <string>

namespace sim {
namespace {

ProError NotificationSet(ProNotifyType type, ProFunction callback) {
    CSession& s = CSession::Instance();
    if (!callback) return PRO_TK_BAD_INPUTS;
    if (auto refused = s.refusedNotifications.find(type); refused != s.refusedNotifications.end()) {
        s.Record("ProNotificationSet " + std::to_string(type) + " -> refused " +
                 std::to_string(refused->second));
        return refused->second;
    }
    s.notifications[type] = callback;
    s.Record("ProNotificationSet " + std::to_string(type));
    return PRO_TK_NO_ERROR;
}

ProError NotificationUnset(ProNotifyType type) {
    CSession& s = CSession::Instance();
    s.Record("ProNotificationUnset " + std::to_string(type));
    return s.notifications.erase(type) ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
}

ProError ModeCurrentGet(ProMode* mode) {
    if (!mode) return PRO_TK_BAD_INPUTS;
    std::optional<ProMode> current = CSession::Instance().CurrentMode();
    if (!current) return PRO_TK_BAD_CONTEXT;
    *mode = *current;
    return PRO_TK_NO_ERROR;
}

ProError SectionIsActive(ProBoolean* active) {
    if (!active) return PRO_TK_BAD_INPUTS;
    *active = CSession::Instance().sectionActive;
    return PRO_TK_NO_ERROR;
}

}  // namespace

void AddNotifyFunctions(std::vector<QvxHostFunction>& table) {
    AddHostFunction<&NotificationSet>(table, "ProNotificationSet_v");
    AddHostFunction<&NotificationUnset>(table, "ProNotificationUnset_v");
    AddHostFunction<&ModeCurrentGet>(table, "ProModeCurrentGet_v");
    AddHostFunction<&SectionIsActive>(table, "ProSectionIsActive_v");
}

}  // namespace sim
