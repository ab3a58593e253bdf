// Plays a scenario against the plug-in DLL in this process, writing a session log.
#pragma once

#include "graphics_window_win32.h"
#include "held_driver_win32.h"
#include "sim/host/scenario.h"
#include "support/win32_handles.h"

#include <cstdint>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace sim {

class CScenarioRunner {
public:
    struct Options {
        std::wstring pluginPath;
        /// The simulated driver library to hold from the start; none when empty.
        std::wstring driverPath;
        std::wstring sandbox;
        std::wstring logPath;
        std::string scenarioName;
        /// The application text directory the host hands over; a scenario may change it.
        std::wstring textDirectory;

        // Fault-injection runs: calls that fail by number over the whole run, set before the
        // first step, and where to write how often each function was called.
        struct CCallFault {
            std::string function;
            std::string error;  ///< a status or error code; for the host also "throw"
            std::uint32_t nth = 0;
        };
        std::vector<CCallFault> hostFaults;
        std::vector<CCallFault> driverFaults;
        std::vector<CCallFault> lcdFaults;
        /// The plug-in's allocation (counted over its loads) that throws std::bad_alloc; 0 none.
        std::uint64_t failAllocation = 0;
        /// The plug-in's allocation, counted from the start of each unload, that throws; 0 none.
        std::uint64_t failAllocationInUnload = 0;
        /// Lines "host|driver|lcd|alloc NAME COUNT"; none when empty.
        std::wstring countsPath;
    };

    explicit CScenarioRunner(Options options);
    ~CScenarioRunner();

    /// Runs every step; false at the first failed expectation or bad step.
    bool Run(const std::vector<CScenarioStep>& steps);
    const std::string& Failure() const { return m_failure; }

    using Handler = std::function<bool(const std::vector<std::string>& args)>;
    /// Adds a step verb; further verbs come from the parts of the host that need them.
    void AddVerb(const std::string& verb, Handler handler) { m_verbs[verb] = std::move(handler); }
    /// Adds an `expect WHAT ...` check; the handler gets the words after WHAT.
    void AddExpectation(const std::string& what, Handler handler) {
        m_expectations[what] = std::move(handler);
    }

    /// Runs `hook` with the plug-in's module each time it is loaded, before it is started.
    void AddLoadHook(std::function<void(HMODULE plugin)> hook) {
        m_loadHooks.push_back(std::move(hook));
    }
    /// Makes `${name}` stand for `value` in the words of later steps.
    void SetVariable(const std::string& name, const std::string& value) {
        m_variables[name] = value;
    }
    const std::wstring& Sandbox() const { return m_options.sandbox; }

    /// Logs one line of the session log.
    void Log(const std::string& line);
    /// Marks the current step failed with a reason; returns false for use in handlers.
    bool Fail(const std::string& reason);
    std::string Expand(const std::string& word) const;

    /// Pumps this thread's messages for `ms` milliseconds.
    static void PumpFor(unsigned ms);
    /// Handles the messages already waiting for this thread, without waiting for more.
    static void PumpPending();

    /// The driver library held for the scenario; not held without --driver or after removal.
    CHeldDriver& Driver() { return m_driver; }
    /// The host's graphics window; off until a scenario turns it on.
    CGraphicsWindow& Graphics() { return m_graphics; }

private:
    /// A step that a thread timer of the main thread runs later, inside whatever loop is
    /// pumping messages then.
    struct CScheduledStep {
        int line = 0;
        unsigned ms = 0;
        ULONGLONG scheduledAt = 0;
        std::vector<std::string> words;  ///< the verb and its expanded arguments
    };

    void AddCoreVerbs();
    /// `host fail NAME STATUS|off [NTH]`, `host throw NAME [NTH]`.
    bool HostFault(const std::vector<std::string>& args);
    /// `host graphics-window on|off`.
    bool GraphicsWindowStep(const std::string& state);
    /// Runs one step's verb with expanded arguments; false when it failed.
    bool Dispatch(const std::vector<std::string>& words);
    bool Schedule(const std::vector<std::string>& args);
    /// Kills every pending timer and logs each step that will not run.
    void CancelScheduled(const char* why);
    static void CALLBACK OnScheduledTimer(HWND, UINT, UINT_PTR id, DWORD);
    /// Ends a run whose step has gone on past the limit while the host still answers
    /// messages: logged as a failure, then the process ends without the unload.
    static void CALLBACK OnStepLimit(HWND, UINT, UINT_PTR id, DWORD);
    void RunScheduled(UINT_PTR id);
    bool ExpectStep(const std::vector<std::string>& args);
    bool Load();
    void Unload();
    void StartCapture();
    std::string CapturedStdout();
    void FlushCaptureToLog();
    void FlushDriverLogToLog();
    /// Sets the faults of the options in the session and the held stand-ins.
    void ArmCallFaults();
    void WriteCallCounts();

    Options m_options;
    std::ofstream m_log;
    std::map<std::string, std::string> m_variables;
    std::map<std::string, Handler> m_verbs;
    std::map<std::string, Handler> m_expectations;
    std::vector<std::function<void(HMODULE)>> m_loadHooks;
    // The driver is declared first so that it outlives the plug-in that may use it.
    CHeldDriver m_driver;
    CGraphicsWindow m_graphics;
    ovklib::CModuleHandle m_plugin;
    std::map<UINT_PTR, CScheduledStep> m_scheduled;
    std::string m_failure;
    int m_line = 0;
    int m_savedStdout = -1;
    std::wstring m_capturePath;
    std::size_t m_captureLogged = 0;
    std::size_t m_driverLinesLogged = 0;
    /// The plug-in's allocations counted in the loads that have ended.
    std::uint64_t m_allocations = 0;
    /// Those of them made while the plug-in unloaded.
    std::uint64_t m_unloadAllocations = 0;
};

/// The whole of `word` as a number (integers also as 0x... hex); empty when any of it is not.
template <typename T>
std::optional<T> WholeNumber(const std::string& word) {
    try {
        std::size_t used = 0;
        T value{};
        if constexpr (std::is_floating_point_v<T>) {
            value = static_cast<T>(std::stod(word, &used));
        } else {
            value = static_cast<T>(std::stoll(word, &used, 0));
        }
        if (used == word.size()) return value;
    } catch (...) {
    }
    return std::nullopt;
}

/// The steps that open models and look at the host's view, macros and display style.
void AddCadSteps(CScenarioRunner& runner);
/// The steps that run the simulated driver, let the device speak, and look at what the
/// driver was told.
void AddDriverSteps(CScenarioRunner& runner);
/// The host's mode and notifications: window, mode, sketch, host-popup, notify, notifications.
void AddModeSteps(CScenarioRunner& runner);
/// `model folder|host|version|save|material|mass|units|type ...`: the current model's data.
bool ModelDataStep(CScenarioRunner& runner, const std::vector<std::string>& args);
/// The steps that choose the plug-in's menu entries and look at the menu bar, the plug-in's
/// dialogs and the help pages it opened.
void AddMenuSteps(CScenarioRunner& runner);
/// Points `plugin`'s import of the help viewer at the host, which records each page shown.
/// False if the module does not import it.
bool RouteHelpViewer(HMODULE plugin);
/// The steps about menus and the foreground: the host's own menu, the choice in the next popup
/// menu, another program's window in front; and the run's own roaming folder.
void AddDesktopSteps(CScenarioRunner& runner);
/// Runs as the other program of `foreground other`: a window in front until `quitEvent` is set.
int RunForegroundWindow(const std::wstring& readyEvent, const std::wstring& quitEvent);
/// The steps that run the simulated LCD manager, press the panel's buttons, and look at the
/// frames and names the applet sent.
void AddLcdSteps(CScenarioRunner& runner);
/// Makes the held LCD library fail `function` with `error` on its `nth` call of the run.
void FailLcdCall(const std::string& function, std::uint32_t error, std::uint32_t nth);
/// Every LCD library function called in this run, "NAME COUNT" a line.
std::string LcdCallTotals();

}  // namespace sim
