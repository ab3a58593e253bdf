// Scenario steps about the host's mode and its notifications: windows made current, sketch
// sections, popup menus, the mode the host reports, refused registrations, any notification
// raised by number.
#include "runner_win32.h"

#include "sim/host/session.h"

namespace sim {
namespace {

using Words = std::vector<std::string>;

std::optional<ProError> Number(const Words& args, std::size_t i) {
    return i < args.size() ? WholeNumber<ProError>(args[i]) : std::nullopt;
}

}  // namespace

void AddModeSteps(CScenarioRunner& runner) {
    CScenarioRunner* r = &runner;
    runner.AddVerb("window", [r](const Words& args) {
        if (args.size() != 1) return r->Fail("usage: window NAME");
        return CSession::Instance().ActivateWindow(args[0]) || r->Fail("no open model " + args[0]);
    });
    runner.AddVerb("mode", [r](const Words& args) {
        CSession& s = CSession::Instance();
        if (args.size() == 1 && args[0] == "auto") {
            s.forcedMode.reset();
        } else if (auto mode = Number(args, 0); mode && args.size() == 1) {
            s.forcedMode = *mode;
        } else {
            return r->Fail("usage: mode N | mode auto");
        }
        return true;
    });
    runner.AddVerb("sketch", [r](const Words& args) {
        CSession& s = CSession::Instance();
        if (args.size() == 1 && args[0] == "enter") {
            s.sectionActive = 1;
        } else if (args.size() == 1 && args[0] == "leave") {
            s.sectionActive = 0;
        } else if (auto value = Number(args, 1); value && args[0] == "value") {
            s.sectionActive = *value;
        } else {
            return r->Fail("usage: sketch enter | sketch leave | sketch value N");
        }
        return true;
    });
    runner.AddVerb("host-popup", [r](const Words& args) {
        if (args.size() != 1 || (args[0] != "open" && args[0] != "close")) {
            return r->Fail("usage: host-popup open | host-popup close");
        }
        CSession::Instance().Notify(args[0] == "open" ? 72 : 73);
        return true;
    });
    runner.AddVerb("notify", [r](const Words& args) {
        auto type = Number(args, 0);
        if (!type || args.size() != 1) return r->Fail("usage: notify TYPE");
        CSession::Instance().Notify(*type);
        return true;
    });
    runner.AddVerb("notifications", [r](const Words& args) {
        auto type = Number(args, 1);
        auto status = args.size() > 2 ? Number(args, 2) : std::optional<ProError>(-1);
        if (args.empty() || args[0] != "refuse" || !type || !status) {
            return r->Fail("usage: notifications refuse TYPE [STATUS]");
        }
        CSession::Instance().refusedNotifications[*type] = *status;
        return true;
    });
    runner.AddExpectation("notification", [r](const Words& args) {
        auto type = Number(args, 0);
        if (!type) return r->Fail("usage: expect notification TYPE");
        return CSession::Instance().notifications.count(*type)
                   ? true
                   : r->Fail("no callback is registered for " + args[0]);
    });
}

}  // namespace sim
