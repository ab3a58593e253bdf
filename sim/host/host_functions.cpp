// The simulated host's functions, as the plug-in's toolkit layer finds them by name.
#include "sim/host/host_entry.h"
#include "sim/host/session.h"
#include "support/os.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <string>

namespace sim {
namespace {

ProError MessageDisplay(const wchar_t* file, const char* key, QvxMessageArgs* args) {
    if (!key || !args) return PRO_TK_BAD_INPUTS;
    va_list copy;
    va_copy(copy, args->list);
    std::string text = FormatMessageKey(key, copy);
    va_end(copy);
    CSession& session = CSession::Instance();
    session.messages.push_back(text);
    session.Record("ProMessageDisplay " + qvx::os::NarrowUtf8(file ? file : L"") + " \"" + text +
                   "\"");
    return PRO_TK_NO_ERROR;
}

}  // namespace

std::string FormatMessageKey(const char* key, va_list args) {
    // The message file's text for a "USER ..." key is the key without its first word.
    std::string pattern = key;
    if (pattern.rfind("USER ", 0) == 0) pattern.erase(0, 5);
    std::string out;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '%' && i + 2 < pattern.size() && pattern[i + 1] >= '0' &&
            pattern[i + 1] <= '9') {
            char kind = pattern[i + 2];
            if (kind == 's') {
                const char* s = va_arg(args, const char*);
                out += s ? s : "";
            } else if (kind == 'w') {
                const wchar_t* w = va_arg(args, const wchar_t*);
                out += qvx::os::NarrowUtf8(w ? w : L"");
            } else if (kind == 'd') {
                out += std::to_string(va_arg(args, int));
            } else if (kind == 'f') {
                out += std::to_string(va_arg(args, double));
            } else {
                out += pattern[i];
                continue;
            }
            i += 2;
            continue;
        }
        out += pattern[i];
    }
    return out;
}

void AddMessageFunctions(std::vector<QvxHostFunction>& table) {
    AddHostFunction<&MessageDisplay>(table, "ProMessageDisplay_v");
}

std::vector<QvxHostFunction> AllHostFunctions() {
    std::vector<QvxHostFunction> table;
    AddMessageFunctions(table);
    AddViewFunctions(table);
    AddMacroFunctions(table);
    AddMouseFunctions(table);
    AddCommandFunctions(table);
    AddNotifyFunctions(table);
    AddModelDataFunctions(table);
    AddMenuFunctions(table);
    std::sort(table.begin(), table.end(), [](const QvxHostFunction& a, const QvxHostFunction& b) {
        return std::strcmp(a.name, b.name) < 0;
    });
    return table;
}

}  // namespace sim
