// The scenario runner: the steps every scenario may use, the plug-in's load and unload, the
// message pump, and the capture of what the plug-in writes to standard output.
#include "runner_win32.h"

#include "sim/host/session.h"
#include "support/os.h"
#include "support/registry.h"
#include "toolkit/host_table.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace sim {
namespace {

namespace fs = std::filesystem;

/// The longest a step may run; the longest of the scenarios takes a few seconds.
constexpr UINT kStepLimitMs = 30000;

std::wstring Wide(const std::string& utf8) { return qvx::os::WidenUtf8(utf8); }
std::string Utf8(const std::wstring& wide) { return qvx::os::NarrowUtf8(wide); }

bool SplitRegistryKey(const std::string& full, qvx::os::RegistryRoot& root, std::wstring& key) {
    auto slash = full.find('\\');
    if (slash == std::string::npos) return false;
    std::string head = full.substr(0, slash);
    if (head == "HKLM" || head == "HKEY_LOCAL_MACHINE") {
        root = qvx::os::RegistryRoot::LocalMachine;
    } else if (head == "HKCU" || head == "HKEY_CURRENT_USER") {
        root = qvx::os::RegistryRoot::CurrentUser;
    } else {
        return false;
    }
    key = Wide(full.substr(slash + 1));
    return true;
}

std::string Quote(const std::string& text) {
    std::string out = "\"";
    for (char c : text) {
        if (c == '\n') {
            out += "\\n";
        } else if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else {
            out += c;
        }
    }
    return out + "\"";
}

/// The one runner of the process, for the thread timers of scheduled steps.
CScenarioRunner* g_runner = nullptr;

std::string Joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& w : words) {
        text += (text.empty() ? "" : " ") +
                (w.find(' ') != std::string::npos || w.empty() ? Quote(w) : w);
    }
    return text;
}

}  // namespace

CScenarioRunner::CScenarioRunner(Options options) : m_options(std::move(options)) {
    g_runner = this;
    m_log.open(fs::path(m_options.logPath), std::ios::binary | std::ios::trunc);
    std::error_code ec;
    fs::remove_all(fs::path(m_options.sandbox), ec);
    fs::create_directories(fs::path(m_options.sandbox), ec);
    m_variables["SANDBOX"] = Utf8(m_options.sandbox);
    CSession::Instance().Reset();
    CSession::Instance().textDirectory = m_options.textDirectory;
    CSession::Instance().onCall = [this](const std::string& line) { Log("  host: " + line); };
    AddCoreVerbs();
    AddCadSteps(*this);
    AddDriverSteps(*this);
    AddModeSteps(*this);
    AddMenuSteps(*this);
    AddDesktopSteps(*this);
    AddLcdSteps(*this);
    StartCapture();
    if (!m_options.driverPath.empty()) m_driver.Load(m_options.driverPath);
    ArmCallFaults();
}

CScenarioRunner::~CScenarioRunner() {
    Unload();
    m_graphics.Off();
    CSession::Instance().graphicsWindow = nullptr;
    WriteCallCounts();
    m_driver.Remove();
    FlushCaptureToLog();
    std::fflush(stdout);
    if (m_savedStdout >= 0) {
        _dup2(m_savedStdout, 1);
        _close(m_savedStdout);
    }
    CSession::Instance().onCall = nullptr;
    g_runner = nullptr;
}

void CScenarioRunner::Log(const std::string& line) {
    m_log << line << "\n";
    m_log.flush();
}

bool CScenarioRunner::Fail(const std::string& reason) {
    if (m_failure.empty()) {
        m_failure = "line " + std::to_string(m_line) + ": " + reason;
    }
    return false;
}

std::string CScenarioRunner::Expand(const std::string& word) const {
    return ExpandVariables(word, m_variables);
}

void CScenarioRunner::PumpPending() {
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
}

void CScenarioRunner::PumpFor(unsigned ms) {
    ULONGLONG end = GetTickCount64() + ms;
    for (;;) {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
        ULONGLONG now = GetTickCount64();
        if (now >= end) break;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    }
}

bool CScenarioRunner::Run(const std::vector<CScenarioStep>& steps) {
    Log("scenario " + m_options.scenarioName);
    Log("plug-in  " + Utf8(m_options.pluginPath));
    Log("sandbox  " + Utf8(m_options.sandbox));
    if (!m_options.driverPath.empty()) {
        Log("driver   " + Utf8(m_options.driverPath));
        if (!m_driver.IsHeld()) {
            Fail("cannot load the driver library " + Utf8(m_options.driverPath));
            Log("FAILED " + m_failure);
            return false;
        }
    }
    for (const CScenarioStep& step : steps) {
        m_line = step.line;
        std::vector<std::string> words{step.words[0]};
        for (std::size_t i = 1; i < step.words.size(); ++i) words.push_back(Expand(step.words[i]));
        Log("[" + std::to_string(step.line) + "] " + Joined(words));
        // A step that waits on the plug-in inside the host's message loop (a held zoom whose
        // release was lost, a modal dialog nobody can find) keeps the host answering but never
        // returns; the limit's timer fires only from such a loop, never from a frozen host.
        UINT_PTR limit = SetTimer(nullptr, 0, kStepLimitMs, &OnStepLimit);
        // A scheduled step that ran inside this one may have failed too.
        bool ok = Dispatch(words) && m_failure.empty();
        if (limit) KillTimer(nullptr, limit);
        FlushCaptureToLog();
        FlushDriverLogToLog();
        if (!ok) {
            if (m_failure.empty()) Fail("step failed");
            Log("FAILED " + m_failure);
            return false;
        }
    }
    Unload();
    FlushCaptureToLog();
    FlushDriverLogToLog();
    if (!m_failure.empty()) {
        Log("FAILED " + m_failure);
        return false;
    }
    Log("PASSED");
    return true;
}

bool CScenarioRunner::Dispatch(const std::vector<std::string>& words) {
    auto verb = m_verbs.find(words[0]);
    if (verb == m_verbs.end()) return Fail("unknown step '" + words[0] + "'");
    return verb->second(std::vector<std::string>(words.begin() + 1, words.end()));
}

bool CScenarioRunner::Schedule(const std::vector<std::string>& args) {
    unsigned long ms = 0;
    try {
        std::size_t used = 0;
        ms = std::stoul(args.at(0), &used);
        if (used != args[0].size() || args.size() < 2) throw std::invalid_argument("usage");
    } catch (...) {
        return Fail("usage: after MILLISECONDS STEP...");
    }
    const std::string& verb = args[1];
    // Loading and unloading from inside the plug-in's own stack would pull it from under
    // itself; timers belong to the steps in between.
    if (verb == "load" || verb == "unload") return Fail("'" + verb + "' cannot be scheduled");
    if (!m_verbs.count(verb)) return Fail("unknown step '" + verb + "'");
    UINT_PTR id = SetTimer(nullptr, 0, static_cast<UINT>(ms), &OnScheduledTimer);
    if (!id) return Fail("SetTimer failed, error " + std::to_string(GetLastError()));
    m_scheduled[id] = {m_line, static_cast<unsigned>(ms), GetTickCount64(),
                       std::vector<std::string>(args.begin() + 1, args.end())};
    return true;
}

void CALLBACK CScenarioRunner::OnScheduledTimer(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    if (g_runner) g_runner->RunScheduled(id);
}

void CALLBACK CScenarioRunner::OnStepLimit(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    if (!g_runner) return;
    g_runner->FlushCaptureToLog();
    g_runner->FlushDriverLogToLog();
    g_runner->Log("  the step has run " + std::to_string(kStepLimitMs) +
                  " ms with the host answering messages; the run ends here");
    g_runner->Fail("the step did not end within " + std::to_string(kStepLimitMs) + " ms");
    g_runner->Log("FAILED " + g_runner->m_failure);
    std::fflush(stdout);
    if (g_runner->m_savedStdout >= 0) _dup2(g_runner->m_savedStdout, 1);
    std::printf("qvxhost: %s FAILED at %s\n", g_runner->m_options.scenarioName.c_str(),
                g_runner->m_failure.c_str());
    std::fflush(stdout);
    // The plug-in's stack is still below this call, so nothing may unwind or unload it.
    TerminateProcess(GetCurrentProcess(), 1);
}

void CScenarioRunner::RunScheduled(UINT_PTR id) {
    auto found = m_scheduled.find(id);
    if (found == m_scheduled.end()) return;
    CScheduledStep step = std::move(found->second);
    m_scheduled.erase(found);
    FlushCaptureToLog();
    FlushDriverLogToLog();
    Log("[" + std::to_string(step.line) + "] after " + std::to_string(step.ms) + " (fired at +" +
        std::to_string(GetTickCount64() - step.scheduledAt) + " ms): " + Joined(step.words));
    // Failures name the scheduled step's line; the step that is running goes on and the
    // runner stops when it returns.
    int outerLine = std::exchange(m_line, step.line);
    if (!Dispatch(step.words) && m_failure.empty()) Fail("scheduled step failed");
    m_line = outerLine;
    FlushCaptureToLog();
    FlushDriverLogToLog();
}

void CScenarioRunner::CancelScheduled(const char* why) {
    for (const auto& [id, step] : m_scheduled) {
        KillTimer(nullptr, id);
        Log("  cancelled " + std::string(why) + ": after " + std::to_string(step.ms) +
            " from line " + std::to_string(step.line) + ": " + Joined(step.words));
    }
    m_scheduled.clear();
}

bool CScenarioRunner::Load() {
    if (m_plugin) return Fail("the plug-in is loaded already");
    m_plugin.Reset(LoadLibraryW(m_options.pluginPath.c_str()));
    if (!m_plugin) return Fail("LoadLibrary failed, error " + std::to_string(GetLastError()));
    auto init = reinterpret_cast<int (*)(const QvxToolkitArgs*)>(
        reinterpret_cast<void*>(GetProcAddress(m_plugin.Get(), "user_initialize_plus")));
    if (!init) return Fail("the plug-in does not export user_initialize_plus");
    if (!CGraphicsWindow::RouteCurrentDC(m_plugin.Get())) {
        Log("  the plug-in does not import wglGetCurrentDC");
    }
    if (!RouteHelpViewer(m_plugin.Get())) Log("  the plug-in does not import HtmlHelpW");
    for (const auto& hook : m_loadHooks) hook(m_plugin.Get());
    if (m_options.failAllocation != 0 || !m_options.countsPath.empty()) {
        // The plug-in counts its allocations from here; the one to fail is numbered over
        // the whole run, so a later load is told how many are left.
        auto arm = reinterpret_cast<void (*)(std::uint64_t)>(
            reinterpret_cast<void*>(GetProcAddress(m_plugin.Get(), "QvxTestArmAllocationFault")));
        std::uint64_t left =
            m_options.failAllocation > m_allocations ? m_options.failAllocation - m_allocations : 0;
        if (arm) {
            arm(left);
        } else {
            Log("  the plug-in has no allocation probe");
        }
    }
    int result = init(CSession::Instance().Args());
    Log("  user_initialize_plus returned " + std::to_string(result));
    return true;
}

void CScenarioRunner::Unload() {
    CancelScheduled(m_plugin ? "at unload" : "at the end");
    if (!m_plugin) return;
    auto term = reinterpret_cast<void (*)()>(
        reinterpret_cast<void*>(GetProcAddress(m_plugin.Get(), "user_terminate_plus")));
    auto arm = reinterpret_cast<void (*)(std::uint64_t)>(
        reinterpret_cast<void*>(GetProcAddress(m_plugin.Get(), "QvxTestArmAllocationFault")));
    auto counted = reinterpret_cast<std::uint64_t (*)()>(
        reinterpret_cast<void*>(GetProcAddress(m_plugin.Get(), "QvxTestAllocationsCounted")));
    const bool probing = arm && counted &&
                         (m_options.failAllocation != 0 || m_options.failAllocationInUnload != 0 ||
                          !m_options.countsPath.empty());
    if (probing) {
        // The unload is counted on its own, from its first allocation.
        m_allocations += counted();
        std::uint64_t left =
            m_options.failAllocation > m_allocations ? m_options.failAllocation - m_allocations : 0;
        arm(m_options.failAllocationInUnload != 0 ? m_options.failAllocationInUnload : left);
    }
    if (term) term();
    std::fflush(stdout);
    if (probing) {
        std::uint64_t inUnload = counted();
        m_unloadAllocations += inUnload;
        m_allocations += inUnload;
    }
    m_plugin.Reset();
    // The host forgets the callbacks of an application it unloads.
    CSession::Instance().notifications.clear();
    Log("  unloaded");
}

void CScenarioRunner::StartCapture() {
    m_capturePath = m_options.sandbox + L"\\stdout.txt";
    std::fflush(stdout);
    int fd = _wopen(m_capturePath.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY,
                    _S_IREAD | _S_IWRITE);
    if (fd < 0) return;
    m_savedStdout = _dup(1);
    _dup2(fd, 1);
    _close(fd);
}

std::string CScenarioRunner::CapturedStdout() {
    std::fflush(stdout);
    auto bytes = qvx::os::ReadWholeFile(m_capturePath);
    return bytes ? std::string(bytes->Data(), bytes->Length()) : std::string();
}

void CScenarioRunner::FlushCaptureToLog() {
    std::string all = CapturedStdout();
    if (all.size() <= m_captureLogged) return;
    std::string fresh = all.substr(m_captureLogged);
    m_captureLogged = all.size();
    std::size_t start = 0;
    while (start < fresh.size()) {
        std::size_t end = fresh.find('\n', start);
        if (end == std::string::npos) end = fresh.size();
        Log("  stdout: " + fresh.substr(start, end - start));
        start = end + 1;
    }
}

void CScenarioRunner::FlushDriverLogToLog() {
    if (!m_driver.IsHeld()) return;
    std::string all = m_driver.Control().Log();
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < all.size()) {
        std::size_t end = all.find('\n', start);
        if (end == std::string::npos) end = all.size();
        lines.push_back(all.substr(start, end - start));
        start = end + 1;
    }
    // A driver that was reset begins its log afresh.
    if (lines.size() < m_driverLinesLogged) m_driverLinesLogged = 0;
    for (std::size_t i = m_driverLinesLogged; i < lines.size(); ++i) Log("  driver: " + lines[i]);
    m_driverLinesLogged = lines.size();
}

void CScenarioRunner::ArmCallFaults() {
    auto number = [](const std::string& text) {
        return static_cast<std::int32_t>(std::strtol(text.c_str(), nullptr, 0));
    };
    for (const auto& f : m_options.hostFaults) {
        CSession::CFault fault;
        fault.kind = f.error == "throw" ? CSession::EFault::Throw : CSession::EFault::Status;
        if (fault.kind == CSession::EFault::Status) fault.status = number(f.error);
        fault.nth = static_cast<int>(f.nth);
        CSession::Instance().faults[f.function] = fault;
    }
    for (const auto& f : m_options.driverFaults) {
        if (m_driver.IsHeld()) {
            m_driver.Control().SimDriverFailCall(f.function.c_str(), number(f.error), f.nth);
        }
    }
    for (const auto& f : m_options.lcdFaults) {
        FailLcdCall(f.function, static_cast<std::uint32_t>(number(f.error)), f.nth);
    }
}

void CScenarioRunner::WriteCallCounts() {
    if (m_options.countsPath.empty()) return;
    std::ofstream out(fs::path(m_options.countsPath), std::ios::binary | std::ios::trunc);
    for (const auto& [name, count] : CSession::Instance().callTotals) {
        out << "host " << name << ' ' << count << '\n';
    }
    auto prefixed = [&out](const char* who, const std::string& lines) {
        std::size_t start = 0;
        while (start < lines.size()) {
            std::size_t end = lines.find('\n', start);
            if (end == std::string::npos) end = lines.size();
            if (end > start) out << who << ' ' << lines.substr(start, end - start) << '\n';
            start = end + 1;
        }
    };
    prefixed("driver", m_driver.CallTotals());
    prefixed("lcd", LcdCallTotals());
    out << "alloc operator-new " << m_allocations << '\n';
    out << "alloc unload " << m_unloadAllocations << '\n';
}

bool CScenarioRunner::HostFault(const std::vector<std::string>& args) {
    const bool throws = args[0] == "throw";
    const char* usage =
        throws ? "usage: host throw NAME [NTH]" : "usage: host fail NAME STATUS|off [NTH]";
    auto& faults = CSession::Instance().faults;
    if (!throws && args.size() == 3 && args[2] == "off") {
        faults.erase(args[1]);
        return true;
    }
    CSession::CFault fault;
    fault.kind = throws ? CSession::EFault::Throw : CSession::EFault::Status;
    try {
        std::size_t next = 2;
        if (!throws) fault.status = static_cast<ProError>(std::stoi(args.at(next++)));
        if (args.size() > next) fault.nth = std::stoi(args[next++]);
        if (args.size() > next || fault.nth < 0) return Fail(usage);
    } catch (...) {
        return Fail(usage);
    }
    faults[args[1]] = fault;
    return true;
}

bool CScenarioRunner::GraphicsWindowStep(const std::string& state) {
    CSession& s = CSession::Instance();
    if (state == "off") {
        m_graphics.Off();
        s.graphicsWindow = nullptr;
        return true;
    }
    if (state != "on") return Fail("usage: host graphics-window on|off");
    std::string how;
    if (!m_graphics.On(how)) {
        return Fail("cannot make the graphics window, error " + std::to_string(GetLastError()));
    }
    s.graphicsWindow = m_graphics.Window();
    Log("  graphics window " + std::to_string(CGraphicsWindow::kClientWidth) + " x " +
        std::to_string(CGraphicsWindow::kClientHeight) + " " + how);
    return true;
}

void CScenarioRunner::AddCoreVerbs() {
    auto need = [this](const std::vector<std::string>& args, std::size_t n, const char* usage) {
        return args.size() >= n ? true : Fail(std::string("usage: ") + usage);
    };

    AddVerb("echo", [this](const std::vector<std::string>& args) {
        std::string text;
        for (const auto& a : args) text += (text.empty() ? "" : " ") + a;
        Log("  " + text);
        return true;
    });
    AddVerb("host", [this, need](const std::vector<std::string>& args) {
        if (!need(args, 2,
                  "host version|build|textdir|wchar-size|omit|unknown-command|fail|throw|"
                  "graphics-window|sample-install ...")) {
            return false;
        }
        CSession& s = CSession::Instance();
        const std::string& what = args[0];
        if (what == "version") {
            s.displayVersion = args[1];
        } else if (what == "build") {
            s.build = args[1];
        } else if (what == "textdir") {
            s.textDirectory = Wide(args[1]);
        } else if (what == "wchar-size") {
            s.wcharSize = static_cast<std::uint32_t>(std::stoul(args[1]));
        } else if (what == "omit") {
            s.Omit(args[1]);
        } else if (what == "unknown-command") {
            s.unknownCommands.insert(args[1]);
        } else if (what == "fail" || what == "throw") {
            return HostFault(args);
        } else if (what == "graphics-window") {
            return GraphicsWindowStep(args[1]);
        } else if (what == "sample-install") {
            // The repository's sample installation, reached through Wine's drive Z:, is laid
            // out at the path given, and PRO_DIRECTORY names it.
            std::string source = std::string("Z:") + QVX_SAMPLE_INSTALL;
            std::error_code ec;
            fs::copy(fs::path(Wide(source)), fs::path(Wide(args[1])),
                     fs::copy_options::recursive | fs::copy_options::overwrite_existing, ec);
            if (ec) return Fail("cannot lay out the sample installation: " + ec.message());
            qvx::os::SetEnv(L"PRO_DIRECTORY", Wide(args[1]));
        } else {
            return Fail("unknown host setting '" + what + "'");
        }
        return true;
    });
    AddVerb("env", [need](const std::vector<std::string>& args) {
        if (!need(args, 1, "env NAME [VALUE]")) return false;
        qvx::os::SetEnv(Wide(args[0]), args.size() > 1 ? std::optional(Wide(args[1]))
                                                       : std::optional<std::wstring>());
        return true;
    });
    AddVerb("registry", [this, need](const std::vector<std::string>& args) {
        if (!need(args, 3, "registry set KEY VALUE DATA | registry delete KEY VALUE")) {
            return false;
        }
        qvx::os::RegistryRoot root{};
        std::wstring key;
        if (!SplitRegistryKey(args[1], root, key)) return Fail("key must start HKLM\\ or HKCU\\");
        if (args[0] == "set" && args.size() >= 4) {
            return qvx::os::WriteRegistryString(root, key, Wide(args[2]), Wide(args[3])) ||
                   Fail("registry write failed");
        }
        if (args[0] == "delete") {
            qvx::os::WriteRegistryString(root, key, Wide(args[2]), std::nullopt);
            return true;
        }
        return Fail("usage: registry set KEY VALUE DATA | registry delete KEY VALUE");
    });
    AddVerb("mkdir", [need](const std::vector<std::string>& args) {
        if (!need(args, 1, "mkdir PATH")) return false;
        std::error_code ec;
        fs::create_directories(fs::path(Wide(args[0])), ec);
        return true;
    });
    AddVerb("file", [this, need](const std::vector<std::string>& args) {
        if (!need(args, 2, "file PATH CONTENT")) return false;
        fs::path path(Wide(args[0]));
        std::error_code ec;
        if (path.has_parent_path()) fs::create_directories(path.parent_path(), ec);
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out << args[1];
        return out ? true : Fail("cannot write " + args[0]);
    });
    AddVerb("remove", [need](const std::vector<std::string>& args) {
        if (!need(args, 1, "remove PATH")) return false;
        std::error_code ec;
        fs::remove_all(fs::path(Wide(args[0])), ec);
        return true;
    });
    AddVerb("after", [this](const std::vector<std::string>& args) { return Schedule(args); });
    AddVerb("cursor", [this, need](const std::vector<std::string>& args) {
        if (!need(args, 2, "cursor X Y")) return false;
        if (!m_graphics.Window()) return Fail("the cursor needs the graphics window");
        int x = std::stoi(args[0]), y = std::stoi(args[1]);
        if (!m_graphics.PlaceCursor(x, y)) return Fail("the cursor cannot be placed there");
        CSession::Instance().cursor = m_graphics.CursorUnits();
        return true;
    });
    AddVerb("config", [this, need](const std::vector<std::string>& args) {
        if (!need(args, 2, "config set NAME VALUE | config remove NAME")) return false;
        auto& options = CSession::Instance().configOptions;
        if (args[0] == "set" && args.size() >= 3) {
            options[Wide(args[1])] = Wide(args[2]);
        } else if (args[0] == "remove") {
            options.erase(Wide(args[1]));
        } else {
            return Fail("usage: config set NAME VALUE | config remove NAME");
        }
        return true;
    });
    AddVerb("load", [this](const std::vector<std::string>&) { return Load(); });
    AddVerb("unload", [this](const std::vector<std::string>&) {
        Unload();
        return true;
    });
    AddVerb("wait", [need](const std::vector<std::string>& args) {
        if (!need(args, 1, "wait MILLISECONDS")) return false;
        PumpFor(static_cast<unsigned>(std::stoul(args[0])));
        return true;
    });
    AddVerb("expect", [this, need](const std::vector<std::string>& args) {
        if (!need(args, 1, "expect WHAT ...")) return false;
        return ExpectStep(args);
    });
}

}  // namespace sim
