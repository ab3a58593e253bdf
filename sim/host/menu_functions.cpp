// The simulated host's menu bar and the commands a plug-in adds to it: each call is recorded
// and checked as the host checks it (a known neighbour, a known command, no name twice).
#include "sim/host/host_entry.h"
#include "sim/host/session.h"
#include "support/os.h"

#include <algorithm>

namespace sim {
namespace {

CSession& S() { return CSession::Instance(); }

std::string Text(const char* s) { return s ? s : "(null)"; }

std::string File(const wchar_t* file) { return file ? qvx::os::NarrowUtf8(file) : "(null)"; }

CSession::CMenu* FindMenu(const std::string& name) {
    auto& bar = S().menuBar;
    auto found = std::find_if(bar.begin(), bar.end(),
                              [&](const CSession::CMenu& m) { return m.name == name; });
    return found == bar.end() ? nullptr : &*found;
}

CSession::CAddedCommand* FindCommand(uiCmdCmdId id) {
    auto found = S().addedCommands.find(reinterpret_cast<std::uintptr_t>(id));
    return found == S().addedCommands.end() ? nullptr : &found->second;
}

ProError CmdActionAdd(const char* name, ProUiCmdActFn action, int priority, ProUiCmdAccessFn access,
                      ProBoolean nonActive, ProBoolean accessory, uiCmdCmdId* id) {
    if (!name || !*name || !action || !id) return PRO_TK_BAD_INPUTS;
    CSession& s = S();
    ProError status = PRO_TK_NO_ERROR;
    if (s.commandIds.count(name)) {
        status = PRO_TK_E_FOUND;
    } else {
        std::uintptr_t number = s.commandIds.size() + 1;
        s.commandIds.emplace(name, number);
        s.addedCommands[number] = {name, action, access, {}, {}};
        *id = reinterpret_cast<uiCmdCmdId>(number);
    }
    s.Record("ProCmdActionAdd " + std::string(name) + " priority " + std::to_string(priority) +
             " non-active " + std::to_string(nonActive) + " accessory " +
             std::to_string(accessory) + " -> " + std::to_string(status));
    return status;
}

ProError CmdDesignate(uiCmdCmdId id, const char* label, const char* help, const char* description,
                      const wchar_t* file) {
    CSession::CAddedCommand* command = FindCommand(id);
    if (command && label) command->label = label;
    ProError status = command && label ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
    S().Record("ProCmdDesignate " + (command ? command->name : "(unknown)") + " \"" + Text(label) +
               "\" \"" + Text(help) + "\" \"" + Text(description) + "\" " + File(file) + " -> " +
               std::to_string(status));
    return status;
}

ProError CmdIconSet(uiCmdCmdId id, const char* icon) {
    CSession::CAddedCommand* command = FindCommand(id);
    if (command && icon) command->icon = icon;
    ProError status = command && icon ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
    S().Record("ProCmdIconSet " + (command ? command->name : "(unknown)") + " " + Text(icon) +
               " -> " + std::to_string(status));
    return status;
}

ProError MenubarMenuAdd(const char* menu, const char* label, const char* neighbour,
                        ProBoolean after, const wchar_t* file) {
    ProError status = PRO_TK_NO_ERROR;
    auto& bar = S().menuBar;
    if (!menu || !label) {
        status = PRO_TK_BAD_INPUTS;
    } else if (FindMenu(menu)) {
        status = PRO_TK_E_FOUND;
    } else if (CSession::CMenu* next = FindMenu(Text(neighbour))) {
        auto place = bar.begin() + (next - bar.data()) + (after ? 1 : 0);
        bar.insert(place, {menu, label, {}});
    } else {
        status = PRO_TK_E_NOT_FOUND;
    }
    S().Record("ProMenubarMenuAdd " + Text(menu) + " \"" + Text(label) + "\" " +
               (after ? "after " : "before ") + Text(neighbour) + " " + File(file) + " -> " +
               std::to_string(status));
    return status;
}

ProError MenubarmenuPushbuttonAdd(const char* menu, const char* item, const char* label,
                                  const char* help, const char* neighbour, ProBoolean after,
                                  uiCmdCmdId id, const wchar_t* file) {
    ProError status = PRO_TK_NO_ERROR;
    CSession::CMenu* target = FindMenu(Text(menu));
    if (!item || !label || !FindCommand(id)) {
        status = PRO_TK_BAD_INPUTS;
    } else if (!target) {
        status = PRO_TK_E_NOT_FOUND;
    } else {
        auto& entries = target->entries;
        auto place = entries.end();
        if (!neighbour) {
            // Without a neighbour an entry goes first, or last when it is to come after.
            place = after ? entries.end() : entries.begin();
        } else {
            place =
                std::find_if(entries.begin(), entries.end(),
                             [&](const CSession::CMenuEntry& e) { return e.item == neighbour; });
            if (place == entries.end()) {
                status = PRO_TK_E_NOT_FOUND;
            } else if (after) {
                ++place;
            }
        }
        if (status == PRO_TK_NO_ERROR) {
            entries.insert(place, {item, label, reinterpret_cast<std::uintptr_t>(id)});
        }
    }
    S().Record("ProMenubarmenuPushbuttonAdd " + Text(menu) + " " + Text(item) + " \"" +
               Text(label) + "\" \"" + Text(help) + "\" " + (after ? "after " : "before ") +
               Text(neighbour) + " " + File(file) + " -> " + std::to_string(status));
    return status;
}

}  // namespace

CMenuChoice ChooseMenuEntry(const std::string& item) {
    CMenuChoice choice;
    const CSession::CAddedCommand* command = nullptr;
    uiCmdCmdId id = nullptr;
    for (const CSession::CMenu& menu : S().menuBar) {
        for (const CSession::CMenuEntry& entry : menu.entries) {
            if (entry.item != item) continue;
            id = reinterpret_cast<uiCmdCmdId>(entry.command);
            command = FindCommand(id);
        }
    }
    if (!command) return choice;
    choice.found = true;
    // Copies: the callbacks may add commands, which moves the table's entries.
    ProUiCmdAccessFn access = command->access;
    ProUiCmdActFn action = command->action;
    std::string name = command->name;
    S().Record("choose " + item + ": access callback of " + name);
    choice.access = access ? access(UI_CMD_ACCESS_CHOSEN) : ACCESS_AVAILABLE;
    S().Record("choose " + item + ": access -> " + std::to_string(choice.access) +
               ", action callback");
    choice.action = action(id, nullptr, nullptr);
    S().Record("choose " + item + ": action -> " + std::to_string(choice.action));
    return choice;
}

void AddMenuFunctions(std::vector<QvxHostFunction>& table) {
    AddHostFunction<&CmdActionAdd>(table, "ProCmdActionAdd_v");
    AddHostFunction<&CmdDesignate>(table, "ProCmdDesignate_v");
    AddHostFunction<&CmdIconSet>(table, "ProCmdIconSet_v");
    AddHostFunction<&MenubarMenuAdd>(table, "ProMenubarMenuAdd_v");
    AddHostFunction<&MenubarmenuPushbuttonAdd>(table, "ProMenubarmenuPushbuttonAdd_v");
}

}  // namespace sim
