// Scenario steps about the host's menu bar, the plug-in's dialogs and the help viewer: choose
// a menu entry as a user would, look at the menus, at the plug-in's windows on the host's
// thread, and at the help pages the plug-in opened.
#include "import_route_win32.h"
#include "runner_win32.h"

#include "sim/host/session.h"
#include "support/os.h"

#include <algorithm>

namespace sim {
namespace {

using Words = std::vector<std::string>;

std::string Joined(const Words& words, std::size_t from) {
    std::string text;
    for (std::size_t i = from; i < words.size(); ++i) text += (text.empty() ? "" : " ") + words[i];
    return text;
}

std::string WindowText(HWND window) {
    wchar_t text[512] = {};
    GetWindowTextW(window, text, 512);
    return qvx::os::NarrowUtf8(text);
}

struct CWindowSearch {
    std::string title;
    HWND found = nullptr;
};

BOOL CALLBACK MatchTitle(HWND window, LPARAM data) {
    auto* search = reinterpret_cast<CWindowSearch*>(data);
    if (!IsWindowVisible(window) || WindowText(window) != search->title) return TRUE;
    search->found = window;
    return FALSE;
}

// The visible top-level window of this thread with the title `title`; null when none.
HWND FindThreadWindow(const std::string& title) {
    CWindowSearch search{title};
    EnumThreadWindows(GetCurrentThreadId(), &MatchTitle, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// The help viewer as the host's machine would show it: the page is only recorded. A null
// window and HH_DISPLAY_TOPIC (0) are what the plug-in passes; anything else is logged too.
HWND WINAPI RecordHelp(HWND caller, LPCWSTR file, UINT command, DWORD_PTR data) {
    std::string page = file ? qvx::os::NarrowUtf8(file) : "(null)";
    CSession::Instance().helpShown.push_back(page);
    CSession::Instance().Record("HtmlHelpW " + page + " command " + std::to_string(command) +
                                (caller ? " with a window" : "") +
                                (data ? " data " + std::to_string(data) : ""));
    return nullptr;
}

}  // namespace

bool RouteHelpViewer(HMODULE plugin) {
    return RouteImport(plugin, "hhctrl.ocx", "HtmlHelpW", reinterpret_cast<void*>(&RecordHelp));
}

void AddMenuSteps(CScenarioRunner& runner) {
    runner.AddVerb("choose", [&runner](const Words& args) {
        if (args.size() != 1) return runner.Fail("usage: choose ITEM");
        CMenuChoice choice = ChooseMenuEntry(args[0]);
        if (!choice.found) return runner.Fail("no menu has the entry " + args[0]);
        runner.Log("  " + args[0] + ": access callback " + std::to_string(choice.access) +
                   ", action callback " + std::to_string(choice.action));
        return true;
    });
    runner.AddVerb("dialog", [&runner](const Words& args) {
        if (args.size() != 3 || args[0] != "press")
            return runner.Fail("usage: dialog press TITLE ID");
        HWND window = FindThreadWindow(args[1]);
        if (!window) return runner.Fail("no window \"" + args[1] + "\"");
        auto id = WholeNumber<int>(args[2]);
        if (!id) return runner.Fail("usage: dialog press TITLE ID");
        PostMessageW(window, WM_COMMAND, MAKEWPARAM(*id, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(window, *id)));
        return true;
    });

    runner.AddExpectation("menubar", [&runner](const Words& args) {
        std::string bar;
        for (const auto& menu : CSession::Instance().menuBar)
            bar += (bar.empty() ? "" : " ") + menu.name;
        return bar == Joined(args, 0) ? true : runner.Fail("the menu bar is \"" + bar + "\"");
    });
    runner.AddExpectation("menu", [&runner](const Words& args) {
        if (args.empty()) return runner.Fail("usage: expect menu NAME [ITEM...]");
        const auto& bar = CSession::Instance().menuBar;
        auto menu = std::find_if(bar.begin(), bar.end(),
                                 [&](const CSession::CMenu& m) { return m.name == args[0]; });
        if (menu == bar.end()) return runner.Fail("the menu bar has no menu " + args[0]);
        std::string items;
        for (const auto& e : menu->entries) items += (items.empty() ? "" : " ") + e.item;
        return items == Joined(args, 1)
                   ? true
                   : runner.Fail("menu " + args[0] + " holds \"" + items + "\"");
    });
    runner.AddExpectation("dialog", [&runner](const Words& args) {
        if (args.empty()) return runner.Fail("usage: expect dialog TITLE [ID TEXT]");
        HWND window = FindThreadWindow(args[0]);
        if (!window) return runner.Fail("no window \"" + args[0] + "\"");
        if (args.size() < 3) return true;
        auto id = WholeNumber<int>(args[1]);
        HWND control = id ? GetDlgItem(window, *id) : nullptr;
        if (!control) return runner.Fail("the window has no control " + args[1]);
        std::string text = WindowText(control);
        return text.find(args[2]) != std::string::npos
                   ? true
                   : runner.Fail("control " + args[1] + " shows \"" + text + "\"");
    });
    runner.AddExpectation("no-dialog", [&runner](const Words& args) {
        if (args.size() != 1) return runner.Fail("usage: expect no-dialog TITLE");
        return !FindThreadWindow(args[0]) ? true
                                          : runner.Fail("a window \"" + args[0] + "\" is open");
    });
    runner.AddExpectation("help", [&runner](const Words& args) {
        const auto& shown = CSession::Instance().helpShown;
        if (args.empty()) return runner.Fail("usage: expect help TEXT | expect help none");
        if (args[0] == "none") {
            return shown.empty() ? true : runner.Fail("the help viewer showed " + shown.back());
        }
        return std::any_of(shown.begin(), shown.end(),
                           [&](const std::string& p) { return p == args[0]; })
                   ? true
                   : runner.Fail("the help viewer did not show " + args[0]);
    });
}

}  // namespace sim
