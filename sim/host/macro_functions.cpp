// The simulated host's macro interpreter: it records every macro and carries out the commands
// it knows (refit, display style, repaint).
#include "sim/host/host_entry.h"
#include "sim/host/session.h"
#include "support/os.h"

namespace sim {
namespace {

std::string Trim(const std::string& s) {
    std::size_t b = s.find_first_not_of(" \t\r\n");
    if (b == std::string::npos) return {};
    std::size_t e = s.find_last_not_of(" \t\r\n");
    return s.substr(b, e - b + 1);
}

// The `quoted` words of one "~ Command `Name` `arg`" piece; empty when it is not one.
std::vector<std::string> CommandWords(const std::string& piece) {
    std::vector<std::string> words;
    if (piece.rfind("~ Command ", 0) != 0) return words;
    std::size_t i = 0;
    while ((i = piece.find('`', i)) != std::string::npos) {
        std::size_t end = piece.find('`', i + 1);
        if (end == std::string::npos) return {};
        words.push_back(piece.substr(i + 1, end - i - 1));
        i = end + 1;
    }
    return words;
}

ProError MacroLoad(const wchar_t* macro) {
    if (!macro) return PRO_TK_BAD_INPUTS;
    return RunMacro(qvx::os::NarrowUtf8(macro));
}

}  // namespace

ProError RunMacro(const std::string& macro) {
    CSession& s = CSession::Instance();
    s.macros.push_back(macro);
    bool known = true;
    std::vector<std::vector<std::string>> commands;
    std::size_t start = 0;
    while (start <= macro.size()) {
        std::size_t end = macro.find(';', start);
        if (end == std::string::npos) end = macro.size();
        std::string piece = Trim(macro.substr(start, end - start));
        start = end + 1;
        if (piece.empty()) continue;
        auto words = CommandWords(piece);
        bool recognised =
            !words.empty() && (words[0] == "ProCmdViewRefit" || words[0] == "ProCmdViewRepaint" ||
                               (words[0] == "ProCmdEnvMdlDisp" && words.size() == 2));
        known = known && recognised;
        commands.push_back(std::move(words));
    }
    ProError status = PRO_TK_NO_ERROR;
    if (s.refusedMacros.count(macro) || (!known && s.refuseUnknownMacros)) {
        status = PRO_TK_GENERAL_ERROR;
    } else {
        for (const auto& words : commands) {
            if (words.empty()) continue;
            if (words[0] == "ProCmdViewRefit") {
                s.Refit();
            } else if (words[0] == "ProCmdViewRepaint") {
                ++s.repaintCount;
            } else if (words[0] == "ProCmdEnvMdlDisp" && words.size() == 2) {
                s.displayStyle = words[1];
            }
        }
    }
    s.Record("ProMacroLoad \"" + macro + "\" -> " + std::to_string(status));
    return status;
}

void AddMacroFunctions(std::vector<QvxHostFunction>& table) {
    AddHostFunction<&MacroLoad>(table, "ProMacroLoad_v");
}

}  // namespace sim
