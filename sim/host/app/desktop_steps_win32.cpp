// Scenario steps about menus and the foreground: the host opens a menu of its own, a choice is
// made in the next popup menu while the plug-in waits in its loop, another program's window
// comes to the front. Also the run's own roaming folder, so that scenarios can read and plant
// the files a plug-in keeps there.
//
// Two answers of Wine's null display driver differ from a Windows desktop's, so the host
// gives the plug-in its own (see import_route_win32.h): the thread's GUI state never carries
// GUI_POPUPMENUMODE there, so the host adds it while a popup menu of the thread is on screen;
// and the per-user roaming folder of the shell is the run's sandbox.
#include "import_route_win32.h"
#include "runner_win32.h"

#include "support/os.h"

#include <shlobj.h>

#include <algorithm>
#include <cwchar>
#include <filesystem>
#include <memory>
#include <optional>

namespace sim {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

constexpr wchar_t kMenuClass[] = L"#32768";
constexpr UINT kGetMenuHandle = 0x01E1;  // MN_GETHMENU
/// How often the host looks for a popup menu on screen, in milliseconds.
constexpr UINT kWatchPeriodMs = 15;
constexpr unsigned kHostMenuTimeoutMs = 3000;
/// A popup menu still open after this long is a fault: the host ends it and fails the step.
constexpr ULONGLONG kPopupTimeoutMs = 5000;
constexpr DWORD kForegroundStartMs = 10000;
constexpr wchar_t kSquare = L'\u25A0';

std::string Utf8(const std::wstring& text) { return qvx::os::NarrowUtf8(text); }

/// The roaming folder the plug-in is given; set once the runner knows its sandbox.
std::wstring g_roaming;

BOOL CALLBACK FindMenuWindow(HWND window, LPARAM out) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    if (std::wcscmp(name, kMenuClass) != 0 || !IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<HWND*>(out) = window;
    return FALSE;
}

/// A visible popup menu window of the calling thread, or null.
HWND VisibleMenuWindow() {
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &FindMenuWindow, reinterpret_cast<LPARAM>(&found));
    return found;
}

void CALLBACK EndHostMenu(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    EndMenu();
}

BOOL WINAPI HostGuiThreadInfo(DWORD thread, GUITHREADINFO* info) {
    BOOL ok = GetGUIThreadInfo(thread, info);
    if (ok && thread == GetCurrentThreadId() && (info->flags & GUI_INMENUMODE) &&
        VisibleMenuWindow()) {
        info->flags |= GUI_POPUPMENUMODE;
    }
    return ok;
}

HRESULT WINAPI HostFolderPathAndSubDir(HWND owner, int csidl, HANDLE token, DWORD flags,
                                       LPCWSTR subFolder, LPWSTR path) {
    if (!path) return E_INVALIDARG;
    if ((csidl & 0xFF) != CSIDL_APPDATA || g_roaming.empty()) {
        return SHGetFolderPathAndSubDirW(owner, csidl, token, flags, subFolder, path);
    }
    fs::path folder(g_roaming);
    if (subFolder && *subFolder) folder /= subFolder;
    std::error_code ec;
    if (csidl & CSIDL_FLAG_CREATE) fs::create_directories(folder, ec);
    if (!fs::is_directory(folder, ec)) return HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND);
    std::wstring text = folder.wstring();
    if (text.size() >= MAX_PATH) return E_FAIL;
    std::wcscpy(path, text.c_str());
    return S_OK;
}

/// One item of a menu as the host saw it, submenus' items behind their item.
struct CMenuItemSeen {
    std::wstring text;
    UINT state = 0;
    UINT type = 0;
    int depth = 0;
    int position = 0;        ///< among the selectable items of its own menu, from 1
    int parentPosition = 0;  ///< the submenu's item in the menu above, for depth 1
};

void Snapshot(HMENU menu, int depth, int parentPosition, std::vector<CMenuItemSeen>& out) {
    int count = GetMenuItemCount(menu);
    int selectable = 0;
    for (int i = 0; i < count; ++i) {
        wchar_t text[256] = {};
        MENUITEMINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_SUBMENU | MIIM_STRING;
        info.dwTypeData = text;
        info.cch = 255;
        if (!GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &info)) continue;
        CMenuItemSeen item{text, info.fState, info.fType, depth, 0, parentPosition};
        if (!(info.fType & MFT_SEPARATOR)) item.position = ++selectable;
        out.push_back(item);
        if (info.hSubMenu) Snapshot(info.hSubMenu, depth + 1, item.position, out);
    }
}

/// The item's text without the squares a speed row carries behind it.
std::wstring Bare(std::wstring text) {
    while (!text.empty() && text.back() == kSquare) text.pop_back();
    return text;
}

class CMenuSteps {
public:
    explicit CMenuSteps(CScenarioRunner& runner) : m_runner(runner) {}
    ~CMenuSteps();

    void Start();
    bool Popup(const Words& args);
    bool HostMenu(const Words& args);
    bool Foreground(const Words& args);
    bool Expect(const std::string& what, const Words& args);

private:
    static void CALLBACK OnWatch(HWND, UINT, UINT_PTR, DWORD);
    void Watch();
    /// The keys that choose `wanted` in the menu seen, or empty when it has no such item.
    std::vector<WORD> KeysFor(const std::wstring& wanted) const;
    void LogSeen();
    void EndForeground();
    HWND HostWindow() const { return m_runner.Graphics().Window(); }

    CScenarioRunner& m_runner;
    /// What to do with the next popup menu: empty for nothing, "\x1b" to dismiss it, else the
    /// text of the item to choose.
    std::optional<std::wstring> m_choice;
    HWND m_menuOnScreen = nullptr;
    ULONGLONG m_openedAt = 0;
    int m_popupsSeen = 0;
    std::vector<CMenuItemSeen> m_seen;
    HMENU m_hostMenu = nullptr;
    std::string m_hostMenuEnd;
    UINT_PTR m_watchTimer = 0;
    PROCESS_INFORMATION m_other{};
    HANDLE m_otherQuit = nullptr;
};

CMenuSteps* g_steps = nullptr;

void CMenuSteps::Start() {
    g_steps = this;
    m_watchTimer = SetTimer(nullptr, 0, kWatchPeriodMs, &OnWatch);
}

CMenuSteps::~CMenuSteps() {
    if (m_watchTimer) KillTimer(nullptr, m_watchTimer);
    if (g_steps == this) g_steps = nullptr;
    EndForeground();
}

void CALLBACK CMenuSteps::OnWatch(HWND, UINT, UINT_PTR, DWORD) {
    if (g_steps) g_steps->Watch();
}

void CMenuSteps::Watch() {
    // A menu may close and the next one open between two looks: a new window is a new menu.
    HWND window = VisibleMenuWindow();
    bool opened = window && window != m_menuOnScreen;
    m_menuOnScreen = window;
    if (opened) m_openedAt = GetTickCount64();
    if (!opened) {
        if (window && !m_hostMenu && GetTickCount64() - m_openedAt > kPopupTimeoutMs) {
            m_runner.Fail("a popup menu stayed open for " + std::to_string(kPopupTimeoutMs) +
                          " ms; the host ends it");
            m_openedAt = GetTickCount64();
            EndMenu();
        }
        return;
    }
    auto menu = reinterpret_cast<HMENU>(SendMessageW(window, kGetMenuHandle, 0, 0));
    if (!menu || menu == m_hostMenu) return;
    ++m_popupsSeen;
    m_seen.clear();
    Snapshot(menu, 0, 0, m_seen);
    LogSeen();
    if (!m_choice) return;
    std::wstring choice = *std::exchange(m_choice, std::nullopt);
    std::vector<WORD> keys = choice == L"\x1b" ? std::vector<WORD>{VK_ESCAPE} : KeysFor(choice);
    if (keys.empty()) {
        m_runner.Fail("the popup menu has no item \"" + Utf8(choice) + "\"");
        keys = {VK_ESCAPE};
    }
    m_runner.Log(choice == L"\x1b" ? "  the popup menu is dismissed"
                                   : "  \"" + Utf8(choice) + "\" is chosen in the popup menu");
    for (WORD key : keys) {
        PostMessageW(window, WM_KEYDOWN, key, 0);
        PostMessageW(window, WM_KEYUP, key, 0);
    }
}

std::vector<WORD> CMenuSteps::KeysFor(const std::wstring& wanted) const {
    for (const CMenuItemSeen& item : m_seen) {
        if (item.type & MFT_SEPARATOR || (item.text != wanted && Bare(item.text) != wanted)) {
            continue;
        }
        // Down selects the next item (the first, at the start); right opens a submenu with
        // its first item selected; return chooses.
        std::vector<WORD> keys;
        if (item.depth == 0) {
            keys.assign(static_cast<std::size_t>(item.position), VK_DOWN);
        } else if (item.depth == 1) {
            keys.assign(static_cast<std::size_t>(item.parentPosition), VK_DOWN);
            keys.push_back(VK_RIGHT);
            keys.insert(keys.end(), static_cast<std::size_t>(item.position - 1), VK_DOWN);
        } else {
            continue;
        }
        keys.push_back(VK_RETURN);
        return keys;
    }
    return {};
}

void CMenuSteps::LogSeen() {
    m_runner.Log("  a popup menu opened:");
    for (const CMenuItemSeen& item : m_seen) {
        std::string line = "    " + std::string(static_cast<std::size_t>(item.depth) * 2, ' ');
        if (item.type & MFT_SEPARATOR) {
            line += "----";
        } else {
            line += Utf8(item.text);
            if (item.state & MFS_CHECKED) line += (item.type & MFT_RADIOCHECK) ? "  (o)" : "  [x]";
        }
        m_runner.Log(line);
    }
}

bool CMenuSteps::Popup(const Words& args) {
    if (args.size() == 1 && args[0] == "dismiss") {
        m_choice = L"\x1b";
    } else if (args.size() == 2 && args[0] == "choose") {
        m_choice = qvx::os::WidenUtf8(args[1]);
    } else {
        return m_runner.Fail("usage: popup choose TEXT | popup dismiss");
    }
    return true;
}

bool CMenuSteps::HostMenu(const Words& args) {
    if (!args.empty()) return m_runner.Fail("usage: host-menu");
    if (!HostWindow()) return m_runner.Fail("the host's menu needs the graphics window");
    HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, 1, L"Host Open");
    AppendMenuW(menu, MF_STRING, 2, L"Host Save");
    m_hostMenu = menu;
    m_hostMenuEnd = "timed out";
    // A menu that nobody closes is ended by the host after a while, so the run goes on.
    UINT_PTR timer = SetTimer(nullptr, 0, kHostMenuTimeoutMs, &EndHostMenu);
    RECT r{};
    GetWindowRect(HostWindow(), &r);
    m_runner.Log("  the host's menu is open");
    BOOL result =
        TrackPopupMenuEx(menu, TPM_RETURNCMD, r.left + 10, r.top + 10, HostWindow(), nullptr);
    if (KillTimer(nullptr, timer)) m_hostMenuEnd = "closed";
    m_hostMenu = nullptr;
    DestroyMenu(menu);
    m_runner.Log("  the host's menu " + m_hostMenuEnd + " (result " + std::to_string(result) + ")");
    return true;
}

bool CMenuSteps::Foreground(const Words& args) {
    if (args.size() != 1 || (args[0] != "host" && args[0] != "other")) {
        return m_runner.Fail("usage: foreground host|other");
    }
    if (args[0] == "host") {
        EndForeground();
        if (!HostWindow()) return m_runner.Fail("the host's foreground needs the graphics window");
        SetForegroundWindow(HostWindow());
        CScenarioRunner::PumpPending();
        return GetForegroundWindow() == HostWindow()
                   ? true
                   : m_runner.Fail("the graphics window did not come to the front");
    }
    EndForeground();
    std::wstring stem = L"qvxhost-front-" + std::to_wstring(GetCurrentProcessId());
    HANDLE ready = CreateEventW(nullptr, TRUE, FALSE, (stem + L"-ready").c_str());
    m_otherQuit = CreateEventW(nullptr, TRUE, FALSE, (stem + L"-quit").c_str());
    wchar_t self[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    std::wstring command = L"\"" + std::wstring(self) + L"\" --foreground-window " + stem +
                           L"-ready " + stem + L"-quit";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    bool started = CreateProcessW(self, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                  nullptr, &startup, &m_other) != FALSE;
    bool up = started && WaitForSingleObject(ready, kForegroundStartMs) == WAIT_OBJECT_0;
    CloseHandle(ready);
    if (!up) return m_runner.Fail("the other program did not start");
    CScenarioRunner::PumpPending();
    DWORD owner = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &owner);
    m_runner.Log("  another program's window is in front (process " + std::to_string(owner) + ")");
    return owner == m_other.dwProcessId
               ? true
               : m_runner.Fail("the other program's window is not in front");
}

void CMenuSteps::EndForeground() {
    if (!m_other.hProcess) return;
    SetEvent(m_otherQuit);
    WaitForSingleObject(m_other.hProcess, kForegroundStartMs);
    CloseHandle(m_other.hProcess);
    CloseHandle(m_other.hThread);
    CloseHandle(m_otherQuit);
    m_other = {};
    m_otherQuit = nullptr;
}

bool CMenuSteps::Expect(const std::string& what, const Words& args) {
    if (what == "popups") {
        auto want = args.empty() ? std::nullopt : WholeNumber<long long>(args[0]);
        if (!want) return m_runner.Fail("usage: expect popups N");
        return m_popupsSeen == *want ? true
                                     : m_runner.Fail(std::to_string(m_popupsSeen) +
                                                     " popup menu(s) opened, expected " + args[0]);
    }
    if (what == "popup-item") {
        static const char* const kMarks[] = {"checked", "unchecked", "radio"};
        if (args.size() != 2 ||
            std::find(std::begin(kMarks), std::end(kMarks), args[1]) == std::end(kMarks)) {
            return m_runner.Fail("usage: expect popup-item TEXT checked|unchecked|radio");
        }
        std::wstring wanted = qvx::os::WidenUtf8(args[0]);
        for (const CMenuItemSeen& item : m_seen) {
            if (item.text != wanted) continue;
            bool checked = (item.state & MFS_CHECKED) != 0;
            bool radio = checked && (item.type & MFT_RADIOCHECK);
            bool ok = args[1] == "radio"     ? radio
                      : args[1] == "checked" ? checked && !radio
                                             : !checked;
            return ok ? true : m_runner.Fail("\"" + args[0] + "\" is not " + args[1]);
        }
        return m_runner.Fail("the last popup menu has no item \"" + args[0] + "\"");
    }
    if (what == "host-menu") {
        if (args.size() != 1) return m_runner.Fail("usage: expect host-menu closed|timed-out");
        return m_hostMenuEnd == args[0] ? true : m_runner.Fail("the host's menu " + m_hostMenuEnd);
    }
    return m_runner.Fail("unknown expectation '" + what + "'");
}

}  // namespace

void AddDesktopSteps(CScenarioRunner& runner) {
    auto steps = std::make_shared<CMenuSteps>(runner);
    steps->Start();
    g_roaming = (fs::path(runner.Sandbox()) / L"AppData" / L"Roaming").wstring();
    runner.SetVariable("APPDATA", Utf8(g_roaming));
    runner.AddLoadHook([](HMODULE plugin) {
        RouteImport(plugin, "user32.dll", "GetGUIThreadInfo",
                    reinterpret_cast<const void*>(&HostGuiThreadInfo));
        RouteImport(plugin, "shell32.dll", "SHGetFolderPathAndSubDirW",
                    reinterpret_cast<const void*>(&HostFolderPathAndSubDir));
    });
    runner.AddVerb("popup", [steps](const Words& args) { return steps->Popup(args); });
    runner.AddVerb("host-menu", [steps](const Words& args) { return steps->HostMenu(args); });
    runner.AddVerb("foreground", [steps](const Words& args) { return steps->Foreground(args); });
    for (const char* what : {"popups", "popup-item", "host-menu"}) {
        runner.AddExpectation(
            what, [steps, what](const Words& args) { return steps->Expect(what, args); });
    }
}

int RunForegroundWindow(const std::wstring& readyEvent, const std::wstring& quitEvent) {
    HANDLE ready = OpenEventW(EVENT_MODIFY_STATE, FALSE, readyEvent.c_str());
    HANDLE quit = OpenEventW(SYNCHRONIZE, FALSE, quitEvent.c_str());
    if (!ready || !quit) return 2;
    WNDCLASSW wc{};
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"QvxOtherProgram";
    RegisterClassW(&wc);
    HWND window = CreateWindowExW(0, wc.lpszClassName, L"Another program", WS_POPUP | WS_VISIBLE,
                                  100, 100, 300, 200, nullptr, nullptr, wc.hInstance, nullptr);
    SetForegroundWindow(window);
    SetEvent(ready);
    for (;;) {
        DWORD woke = MsgWaitForMultipleObjects(1, &quit, FALSE, INFINITE, QS_ALLINPUT);
        if (woke == WAIT_OBJECT_0) break;
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
    }
    DestroyWindow(window);
    return 0;
}

}  // namespace sim
