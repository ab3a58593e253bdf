// The simulated host's command table: every command name is known unless the session says
// otherwise, and each known name keeps one non-zero identifier for the session's life.
#include "sim/host/host_entry.h"
#include "sim/host/session.h"

namespace sim {
namespace {

ProError CmdCmdIdFind(const char* name, uiCmdCmdId* id) {
    if (!name || !id) return PRO_TK_BAD_INPUTS;
    CSession& s = CSession::Instance();
    if (!*name || s.unknownCommands.count(name)) {
        s.Record(std::string("ProCmdCmdIdFind \"") + name + "\" -> not found");
        return PRO_TK_E_NOT_FOUND;
    }
    auto [entry, added] = s.commandIds.emplace(name, s.commandIds.size() + 1);
    *id = reinterpret_cast<uiCmdCmdId>(entry->second);
    return PRO_TK_NO_ERROR;
}

}  // namespace

void AddCommandFunctions(std::vector<QvxHostFunction>& table) {
    AddHostFunction<&CmdCmdIdFind>(table, "ProCmdCmdIdFind_v");
}

}  // namespace sim
