// qvxhost.exe: the simulated CAD host. Loads the plug-in DLL, plays a scenario file and
// writes a session log; exits 1 on the first failed expectation, 2 on bad usage.
//
//   qvxhost.exe [--plugin DLL] [--driver DLL] [--log FILE] [--sandbox DIR] SCENARIO
//   qvxhost.exe --protkdat FILE ... SCENARIO   (the DLL and text directory from FILE)
//
// Fault-injection runs add, before the scenario (NTH counts calls from the start of the run):
//   --fail-host NAME:STATUS|throw:NTH   --fail-driver NAME:ERROR:NTH   --fail-lcd NAME:ERROR:NTH
//   --fail-alloc NTH      the plug-in's NTH allocation throws std::bad_alloc
//   --fail-alloc-in-unload NTH   the NTH allocation of each unload does
//   --count-calls FILE    writes "host|driver|lcd|alloc NAME COUNT" lines at the end
#include "runner_win32.h"

#include "sim/host/protk_file.h"
#include "support/os.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;

// Paths from the build machine reach us as /unix/paths; Wine shows them on drive Z:.
std::wstring WindowsPath(std::wstring path) {
    if (!path.empty() && path[0] == L'/') {
        for (auto& c : path) {
            if (c == L'/') c = L'\\';
        }
        path = L"Z:" + path;
    }
    return path;
}

std::wstring ModuleFolder() {
    wchar_t buffer[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, buffer, MAX_PATH);
    return fs::path(buffer).parent_path().wstring();
}

// The host's registration file names the plug-in's DLL for this host's platform and its text
// directory, as the host finds them there.
bool ReadProtk(const std::wstring& path, sim::CScenarioRunner::Options& options) {
    auto text = qvx::os::ReadWholeFile(path);
    if (!text) {
        std::fprintf(stderr, "qvxhost: cannot read %ls\n", path.c_str());
        return false;
    }
    auto blocks = sim::ParseProtk(std::string(text->Data(), text->Length()));
    auto dll = sim::ProtkValue(blocks, "QvxProENGINEER", "exec_file");
    if (!dll) {
        std::fprintf(stderr, "qvxhost: %ls names no exec_file for QvxProENGINEER\n", path.c_str());
        return false;
    }
    options.pluginPath = qvx::os::WidenAcp(*dll);
    if (auto textDir = sim::ProtkValue(blocks, "QvxProENGINEER", "text_dir")) {
        options.textDirectory = qvx::os::WidenAcp(*textDir);
    }
    return true;
}

// NAME:ERROR:NTH, NTH at least 1.
bool ParseCallFault(const std::wstring& text, sim::CScenarioRunner::Options::CCallFault& fault) {
    std::string plain = qvx::os::NarrowUtf8(text);
    auto last = plain.rfind(':');
    auto first = plain.find(':');
    if (first == std::string::npos || last == first || first == 0) return false;
    fault.function = plain.substr(0, first);
    fault.error = plain.substr(first + 1, last - first - 1);
    char* end = nullptr;
    unsigned long nth = std::strtoul(plain.c_str() + last + 1, &end, 10);
    if (*end != '\0' || nth == 0 || fault.error.empty()) return false;
    fault.nth = static_cast<std::uint32_t>(nth);
    return true;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    // The other program that a scenario's `foreground other` puts in front.
    if (argc == 4 && std::wstring(argv[1]) == L"--foreground-window") {
        return sim::RunForegroundWindow(argv[2], argv[3]);
    }
    sim::CScenarioRunner::Options options;
    std::wstring scenarioPath;
    std::wstring protkPath;
    for (int i = 1; i < argc; ++i) {
        std::wstring arg = argv[i];
        auto next = [&]() { return i + 1 < argc ? WindowsPath(argv[++i]) : std::wstring(); };
        if (arg == L"--plugin") {
            options.pluginPath = next();
        } else if (arg == L"--driver") {
            options.driverPath = next();
        } else if (arg == L"--log") {
            options.logPath = next();
        } else if (arg == L"--sandbox") {
            options.sandbox = next();
        } else if (arg == L"--protkdat") {
            protkPath = next();
        } else if (arg == L"--fail-host" || arg == L"--fail-driver" || arg == L"--fail-lcd") {
            sim::CScenarioRunner::Options::CCallFault fault;
            if (!ParseCallFault(next(), fault)) {
                std::fprintf(stderr, "qvxhost: %ls takes NAME:ERROR:NTH\n", arg.c_str());
                return 2;
            }
            auto& list = arg == L"--fail-host"     ? options.hostFaults
                         : arg == L"--fail-driver" ? options.driverFaults
                                                   : options.lcdFaults;
            list.push_back(fault);
        } else if (arg == L"--fail-alloc-in-unload") {
            options.failAllocationInUnload = std::wcstoull(next().c_str(), nullptr, 10);
        } else if (arg == L"--fail-alloc") {
            options.failAllocation = std::wcstoull(next().c_str(), nullptr, 10);
        } else if (arg == L"--count-calls") {
            options.countsPath = next();
        } else {
            scenarioPath = WindowsPath(arg);
        }
    }
    if (scenarioPath.empty()) {
        std::fprintf(stderr,
                     "usage: qvxhost [--plugin DLL | --protkdat FILE] [--driver DLL] [--log FILE] "
                     "[--sandbox DIR] [--fail-host|--fail-driver|--fail-lcd NAME:ERROR:NTH] "
                     "[--fail-alloc NTH] [--fail-alloc-in-unload NTH] [--count-calls FILE] "
                     "SCENARIO\n");
        return 2;
    }
    auto text = qvx::os::ReadWholeFile(scenarioPath);
    if (!text) {
        std::fprintf(stderr, "qvxhost: cannot read %ls\n", scenarioPath.c_str());
        return 2;
    }
    std::vector<sim::CScenarioError> errors;
    auto steps = sim::ParseScenario(std::string(text->Data(), text->Length()), &errors);
    for (const auto& e : errors) {
        std::fprintf(stderr, "%ls:%d: %s\n", scenarioPath.c_str(), e.line, e.message.c_str());
    }
    if (!errors.empty()) return 2;

    if (!protkPath.empty() && !ReadProtk(protkPath, options)) return 2;

    std::wstring stem = fs::path(scenarioPath).stem().wstring();
    options.scenarioName = qvx::os::NarrowUtf8(fs::path(scenarioPath).filename().wstring());
    if (options.pluginPath.empty()) options.pluginPath = ModuleFolder() + L"\\qvxproengineer.dll";
    if (options.logPath.empty()) options.logPath = stem + L".log";
    if (options.sandbox.empty()) {
        wchar_t temp[MAX_PATH] = {};
        GetTempPathW(MAX_PATH, temp);
        options.sandbox = std::wstring(temp) + L"qvxhost-" + stem;
    }
    options.logPath = fs::absolute(fs::path(options.logPath)).wstring();

    bool passed = false;
    std::string failure;
    {
        sim::CScenarioRunner runner(options);
        passed = runner.Run(steps);
        failure = runner.Failure();
    }
    if (passed) {
        std::printf("qvxhost: %s passed\n", options.scenarioName.c_str());
    } else {
        std::printf("qvxhost: %s FAILED at %s\n", options.scenarioName.c_str(), failure.c_str());
    }
    std::printf("qvxhost: session log %ls\n", options.logPath.c_str());
    return passed ? 0 : 1;
}
