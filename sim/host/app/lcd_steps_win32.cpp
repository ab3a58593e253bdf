// Scenario steps about the simulated LCD: install the client library (or something that is
// not one), run the manager, let the panel's device come and go, press its soft buttons, and
// look at what the applet sent. The library (simlcd.dll beside qvxhost.exe) is held for the
// whole run, so the manager's state lasts through the plug-in's unload and reload.
#include "runner_win32.h"

#include "lcd/applet_name_claim.h"
#include "sim/lcd/control_api_win32.h"
#include "support/os.h"
#include "support/registry.h"

#include <cstdlib>
#include <filesystem>
#include <map>

namespace sim {
namespace {

using Words = std::vector<std::string>;

constexpr wchar_t kServerBinaryKey[] =
    L"SOFTWARE\\Classes\\CLSID\\{4B1D7C90-6E2A-41F3-9C55-2A7E10D3B846}\\ServerBinary";
constexpr wchar_t kManagerKey[] = L"Software\\Lorimet\\LCD Software\\LCD Manager\\CurrentVersion";
constexpr wchar_t kAppletWindowClass[] = L"QvxProENGINEER LCD Applet";
constexpr std::uint32_t kDataChangedMessage = 0x8020;

const std::map<std::string, std::uint32_t> kButtons = {
    {"left", 0x100}, {"right", 0x200}, {"ok", 0x400},    {"cancel", 0x800},
    {"up", 0x1000},  {"down", 0x2000}, {"menu", 0x4000},
};

struct CHeldLcd {
    ovklib::CModuleHandle module;
    qvx::simlcd::CSimLcdControl control;
    std::wstring path;
    std::size_t linesLogged = 0;
    std::vector<ovklib::CKernelHandle> occupiedNames;
};

CHeldLcd& Held() {
    static CHeldLcd held;
    return held;
}

// The manager's thread must end before the library goes with the process.
void StopManagerAtExit() {
    CHeldLcd& held = Held();
    held.occupiedNames.clear();
    if (held.module) held.control.SimLcdReset();
}

std::wstring ProgramFolder() {
    wchar_t buffer[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, buffer, MAX_PATH);
    return std::filesystem::path(buffer).parent_path().wstring();
}

bool SetServerBinary(const std::optional<std::wstring>& path) {
    return qvx::os::WriteRegistryString(qvx::os::RegistryRoot::LocalMachine, kServerBinaryKey, L"",
                                        path);
}

void FlushLog(CScenarioRunner& runner) {
    CHeldLcd& held = Held();
    std::uint32_t size = held.control.SimLcdReadLog(nullptr, 0);
    std::string all(size + 1, '\0');
    held.control.SimLcdReadLog(all.data(), size + 1);
    all.resize(size);
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < all.size()) {
        std::size_t end = all.find('\n', start);
        lines.push_back(all.substr(start, end - start));
        start = end + 1;
    }
    if (lines.size() < held.linesLogged) held.linesLogged = 0;
    for (std::size_t i = held.linesLogged; i < lines.size(); ++i) runner.Log("  lcd: " + lines[i]);
    held.linesLogged = lines.size();
}

bool ButtonStep(CScenarioRunner& runner, const Words& args, bool press) {
    std::uint32_t bits = 0;
    for (std::size_t i = 1; i < args.size(); ++i) {
        auto found = kButtons.find(args[i]);
        if (found == kButtons.end()) return runner.Fail("unknown button '" + args[i] + "'");
        bits |= found->second;
    }
    if (!bits) return runner.Fail("usage: lcd press|release BUTTON...");
    std::uint32_t mask = Held().control.SimLcdButtonMask();
    Held().control.SimLcdSoftButtons(press ? (mask | bits) : (mask & ~bits));
    return true;
}

bool LcdStep(CScenarioRunner& runner, const Words& args) {
    CHeldLcd& held = Held();
    if (!held.module) return runner.Fail("the simulated LCD library is not loaded");
    auto& c = held.control;
    const std::string what = args.empty() ? "" : args[0];
    auto arg = [&](std::size_t i) { return i < args.size() ? args[i] : std::string(); };
    bool ok = true;
    if (what == "install") {
        ok = SetServerBinary(held.path);
    } else if (what == "install-path") {
        ok = SetServerBinary(qvx::os::WidenUtf8(arg(1)));
    } else if (what == "uninstall") {
        SetServerBinary(std::nullopt);
    } else if (what == "interface") {
        c.SimLcdSetInterfaceNull(arg(1) == "null" ? 1 : 0);
    } else if (what == "manager") {
        const std::string how = arg(1);
        if (how == "start") {
            ok = c.SimLcdStartManager() != 0;
        } else if (how == "stop") {
            c.SimLcdStopManager();
        } else if (how == "kill") {
            c.SimLcdKillManager();
        } else if (how == "die-on-frame") {
            c.SimLcdDieOnNextFrame();
        } else {
            return runner.Fail("usage: lcd manager start|stop|kill|die-on-frame");
        }
    } else if (what == "device") {
        if (arg(1) != "arrive" && arg(1) != "remove") {
            return runner.Fail("usage: lcd device arrive|remove");
        }
        c.SimLcdSetDevicePresent(arg(1) == "arrive" ? 1 : 0);
    } else if (what == "press" || what == "release") {
        if (!ButtonStep(runner, args, what == "press")) return false;
    } else if (what == "buttons") {
        auto mask = WholeNumber<std::uint32_t>(arg(1));
        if (!mask) return runner.Fail("usage: lcd buttons MASK");
        c.SimLcdSoftButtons(*mask);
    } else if (what == "notify") {
        auto code = WholeNumber<std::uint32_t>(arg(1));
        if (!code) return runner.Fail("usage: lcd notify CODE [PARAM]");
        c.SimLcdNotify(*code, WholeNumber<std::uint32_t>(arg(2)).value_or(0));
    } else if (what == "flood") {
        auto count = WholeNumber<std::uint32_t>(arg(1));
        auto code = WholeNumber<std::uint32_t>(arg(2));
        if (!count || !code) return runner.Fail("usage: lcd flood COUNT CODE");
        c.SimLcdFlood(*count, *code);
    } else if (what == "frames") {
        std::wstring folder = qvx::os::WidenUtf8(arg(1));
        std::error_code ec;
        std::filesystem::create_directories(folder, ec);
        c.SimLcdSetFrameFolder(folder.c_str());
    } else if (what == "control-panel") {
        // The manager's installation folder, with the stand-in control panel in it.
        std::wstring folder = ProgramFolder() + L"\\simlcd-install";
        ok = qvx::os::WriteRegistryString(qvx::os::RegistryRoot::LocalMachine, kManagerKey,
                                          L"InstallPath", folder);
        // Wine's shell opens a file without a verb only through "open", and its class of
        // control panel files has only "cplopen": give it the "open" that Windows resolves.
        ok = ok && qvx::os::WriteRegistryString(
                       qvx::os::RegistryRoot::LocalMachine,
                       L"Software\\Classes\\cplfile\\shell\\open\\command", L"",
                       std::wstring(L"rundll32.exe shell32.dll,Control_RunDLL \"%1\""));
    } else if (what == "data-changed") {
        HWND window = FindWindowW(kAppletWindowClass, nullptr);
        if (!window) return runner.Fail("no LCD applet window");
        PostMessageW(window, kDataChangedMessage, 1, 0);
    } else if (what == "occupy-name") {
        // Another process of this program holding NAME, as its applet would.
        std::wstring name =
            qvx::lcd::AppletClaimName(qvx::os::ExecutablePath(), qvx::os::WidenUtf8(arg(1)));
        held.occupiedNames.emplace_back(CreateMutexW(nullptr, TRUE, name.c_str()));
    } else if (what != "log") {
        return runner.Fail("unknown lcd step '" + what + "'");
    }
    // What the library's thread posted to the applet is handled before the next step.
    CScenarioRunner::PumpPending();
    FlushLog(runner);
    return ok ? true : runner.Fail("lcd " + what + " failed");
}

bool Expectation(CScenarioRunner& runner, const std::string& what, const Words& args) {
    CHeldLcd& held = Held();
    if (!held.module) return runner.Fail("the simulated LCD library is not loaded");
    FlushLog(runner);
    auto& c = held.control;
    auto arg = [&](std::size_t i) { return i < args.size() ? args[i] : std::string(); };
    auto number = [&](std::uint32_t have, const std::string& label) {
        auto want = WholeNumber<std::uint32_t>(arg(0));
        if (want && *want == have) return true;
        return runner.Fail(label + " " + std::to_string(have) + ", expected " + arg(0));
    };
    if (what == "lcd-frames") return number(c.SimLcdFrameCount(), "the panel received frames:");
    if (what == "lcd-connections") return number(c.SimLcdConnectionCount(), "LCD connections:");
    if (what == "lcd-calls") {
        auto want = WholeNumber<std::uint32_t>(arg(1));
        std::uint32_t have = c.SimLcdCallCount(arg(0).c_str());
        return want && *want == have ? true
                                     : runner.Fail(arg(0) + " called " + std::to_string(have) +
                                                   " times, expected " + arg(1));
    }
    if (what == "lcd-foreground") {
        bool have = c.SimLcdForeground() != 0;
        return (arg(0) == "yes") == have
                   ? true
                   : runner.Fail(std::string("the applet ") + (have ? "holds" : "does not hold") +
                                 " the panel's foreground");
    }
    if (what == "lcd-name") {
        std::uint32_t size = c.SimLcdConnectionName(nullptr, 0);
        std::wstring name(size + 1, L'\0');
        c.SimLcdConnectionName(name.data(), size + 1);
        name.resize(size);
        std::string have = qvx::os::NarrowUtf8(name);
        return have == arg(0) ? true
                              : runner.Fail("the applet's name is \"" + have + "\", expected \"" +
                                            arg(0) + "\"");
    }
    std::uint32_t size = c.SimLcdReadLog(nullptr, 0);
    std::string log(size + 1, '\0');
    c.SimLcdReadLog(log.data(), size + 1);
    bool has = log.find(arg(0)) != std::string::npos;
    if (what == "lcd-log")
        return has ? true : runner.Fail("no LCD log line has \"" + arg(0) + "\"");
    return !has ? true : runner.Fail("an LCD log line has \"" + arg(0) + "\"");
}

}  // namespace

void FailLcdCall(const std::string& function, std::uint32_t error, std::uint32_t nth) {
    CHeldLcd& held = Held();
    if (held.module) held.control.SimLcdFailCall(function.c_str(), error, nth);
}

std::string LcdCallTotals() {
    CHeldLcd& held = Held();
    if (!held.module) return {};
    std::string text(held.control.SimLcdReadCallTotals(nullptr, 0), '\0');
    held.control.SimLcdReadCallTotals(text.data(), static_cast<std::uint32_t>(text.size() + 1));
    return text;
}

void AddLcdSteps(CScenarioRunner& runner) {
    CHeldLcd& held = Held();
    if (!held.module) {
        held.path = ProgramFolder() + L"\\simlcd.dll";
        held.module.Reset(LoadLibraryW(held.path.c_str()));
        if (held.module && !held.control.Bind(held.module.Get())) held.module.Reset();
        std::atexit(&StopManagerAtExit);
    }
    if (held.module) {
        // Each run starts with no manager, no library registered, and frames in the sandbox.
        held.control.SimLcdReset();
        held.linesLogged = 0;
        SetServerBinary(std::nullopt);
        qvx::os::WriteRegistryString(qvx::os::RegistryRoot::LocalMachine, kManagerKey,
                                     L"InstallPath", std::nullopt);
        std::wstring frames = qvx::os::WidenUtf8(runner.Expand("${SANDBOX}")) + L"\\lcd";
        std::error_code ec;
        std::filesystem::create_directories(frames, ec);
        held.control.SimLcdSetFrameFolder(frames.c_str());
    }
    runner.AddVerb("lcd", [&runner](const Words& args) { return LcdStep(runner, args); });
    for (const char* what : {"lcd-frames", "lcd-connections", "lcd-calls", "lcd-foreground",
                             "lcd-name", "lcd-log", "no-lcd-log"}) {
        std::string name = what;
        runner.AddExpectation(
            name, [&runner, name](const Words& args) { return Expectation(runner, name, args); });
    }
}

}  // namespace sim
