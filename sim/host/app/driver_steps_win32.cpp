// Scenario steps about the simulated driver: run it (stop, start, version, device, sync
// answers), remove it, let the device speak through the plug-in's window or its callback, and
// look at what the driver was told.
#include "runner_win32.h"

#include "client/detail/kvw_event.h"
#include "support/os.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <bit>
#include <cstring>
#include <memory>
#include <optional>
#include <random>

namespace sim {
namespace {

using Words = std::vector<std::string>;

/// The restarted driver's request to reconnect, as its "CommandEvent".
constexpr std::uint32_t kReconnectCommand = 27704;
/// How long a device step waits for the plug-in to fetch what it was sent.
constexpr unsigned kFetchWaitMs = 500;

OxKvwEvent Record(std::uint32_t type) {
    OxKvwEvent event;
    std::memset(&event, 0, sizeof event);
    event.type = type;
    return event;
}

bool HasLine(const std::string& text, const std::string& line) {
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        if (text.compare(start, end - start, line) == 0) return true;
        start = end + 1;
    }
    return false;
}

class CDriverSteps {
public:
    explicit CDriverSteps(CScenarioRunner& runner) : m_runner(runner) {}

    bool Driver(const Words& args);
    bool Device(const Words& args);
    bool Expect(const std::string& what, const Words& args);

private:
    /// The control API, or null after a failed step that says why.
    qvx::simdriver::CSimDriverControl* Control();
    bool Usage(const char* usage) { return m_runner.Fail(std::string("usage: ") + usage); }
    /// Posts "CommandEvent" to the plug-in's windows and lets it handle what is waiting.
    void PostCommandEvent(qvx::simdriver::CSimDriverControl& driver, std::uint32_t wParam);
    /// Sends a record by the chosen road and lets the plug-in handle it.
    bool Deliver(const OxKvwEvent& event);
    bool MakeRecord(const Words& args, OxKvwEvent& event);

    CScenarioRunner& m_runner;
    bool m_callbackRoad = false;
};

qvx::simdriver::CSimDriverControl* CDriverSteps::Control() {
    if (m_runner.Driver().IsHeld()) return &m_runner.Driver().Control();
    m_runner.Fail("no driver library is held (qvxhost ran without --driver, or it was removed)");
    return nullptr;
}

void CDriverSteps::PostCommandEvent(qvx::simdriver::CSimDriverControl& driver,
                                    std::uint32_t wParam) {
    std::uint32_t windows = driver.SimDriverPostCommandEvent(wParam);
    m_runner.Log("  CommandEvent " + std::to_string(wParam) + " posted to " +
                 std::to_string(windows) + " window(s)");
    CScenarioRunner::PumpPending();
}

bool CDriverSteps::Driver(const Words& args) {
    if (args.empty()) {
        return Usage(
            "driver stop|start|version|remove|sync|command-event|device|config|refuse|accept|"
            "messagebox-answer ...");
    }
    auto* driver = Control();
    if (!driver) return false;
    const std::string& what = args[0];
    if (what == "stop") {
        driver->SimDriverStop();
    } else if (what == "start") {
        driver->SimDriverStart();
        PostCommandEvent(*driver, kReconnectCommand);
    } else if (what == "version") {
        std::optional<long long> parts[3] = {0, 0, 0};
        for (std::size_t i = 1; i < args.size() && i <= 3; ++i)
            parts[i - 1] = WholeNumber<long long>(args[i]);
        if (args.size() < 2 || args.size() > 4 || !parts[0] || !parts[1] || !parts[2]) {
            return Usage("driver version MAJOR [MINOR [BUILD]]");
        }
        driver->SimDriverSetVersion(static_cast<std::int32_t>(*parts[0]),
                                    static_cast<std::int32_t>(*parts[1]),
                                    static_cast<std::int32_t>(*parts[2]));
    } else if (what == "remove") {
        m_runner.Driver().Remove();
        m_runner.Log("  the driver library is let go");
    } else if (what == "sync") {
        static const char* const kModes[] = {"ignore", "post", "send"};
        auto mode = std::find(std::begin(kModes), std::end(kModes), args.size() > 1 ? args[1] : "");
        if (args.size() < 2 || mode == std::end(kModes)) {
            return Usage("driver sync ignore|post|send");
        }
        driver->SimDriverSetSyncAnswer(static_cast<std::int32_t>(mode - std::begin(kModes)));
    } else if (what == "command-event") {
        auto wParam = args.size() > 1 ? WholeNumber<long long>(args[1]) : std::nullopt;
        if (!wParam) return Usage("driver command-event WPARAM");
        PostCommandEvent(*driver, static_cast<std::uint32_t>(*wParam));
    } else if (what == "config") {
        if (args.size() < 2 || args.size() > 3) return Usage("driver config KEY [VALUE]");
        driver->SimDriverSetConfigValue(args[1].c_str(),
                                        args.size() > 2 ? args[2].c_str() : nullptr);
    } else if (what == "refuse") {
        auto error = args.size() > 2 ? WholeNumber<long long>(args[2]) : std::nullopt;
        bool once = args.size() > 3 && args[3] == "once";
        if (!error || *error == 0 || (args.size() > 3 && !once) || args.size() > 4) {
            return Usage("driver refuse FUNCTION ERROR [once]");
        }
        auto refuse = once ? driver->SimDriverRefuseNext : driver->SimDriverRefuse;
        refuse(args[1].c_str(), static_cast<std::int32_t>(*error));
    } else if (what == "accept") {
        if (args.size() != 2) return Usage("driver accept FUNCTION");
        driver->SimDriverRefuse(args[1].c_str(), 0);
        driver->SimDriverRefuseNext(args[1].c_str(), 0);
    } else if (what == "save-record") {
        // driver save-record WHAT PATH: the record as the driver holds it, for a person to read.
        if (args.size() != 3) return Usage("driver save-record WHAT PATH");
        std::ofstream out(std::filesystem::path(qvx::os::WidenUtf8(args[2])), std::ios::binary);
        out << driver->Record(args[1].c_str());
        if (!out) return m_runner.Fail("cannot write " + args[2]);
    } else if (what == "messagebox-answer") {
        auto answer = args.size() > 1 ? WholeNumber<long long>(args[1]) : std::nullopt;
        if (!answer) return Usage("driver messagebox-answer N");
        driver->SimDriverSetMessageBoxAnswer(static_cast<std::int32_t>(*answer));
    } else if (what == "device") {
        auto type = args.size() > 1 ? WholeNumber<long long>(args[1]) : std::nullopt;
        if (!type) return Usage("driver device TYPE [NAME]");
        driver->SimDriverSetDevice(static_cast<std::uint32_t>(*type),
                                   args.size() > 2 ? args[2].c_str() : nullptr);
    } else {
        return m_runner.Fail("unknown driver step '" + what + "'");
    }
    return true;
}

bool CDriverSteps::MakeRecord(const Words& args, OxKvwEvent& event) {
    const std::string& what = args[0];
    if (what == "press" || what == "release") {
        auto code = args.size() > 1 ? WholeNumber<long long>(args[1]) : std::nullopt;
        auto parameter = args.size() > 2 ? WholeNumber<float>(args[2]) : std::optional<float>(0.0f);
        if (!code || !parameter) return Usage("device press|release CODE [FLOAT]");
        event = Record(17);
        event.matrixCommand.pressed = what == "press" ? 1 : 0;
        event.matrixCommand.id = static_cast<std::uint32_t>(*code);
        event.matrixCommand.blockB[0] = std::bit_cast<std::uint32_t>(*parameter);
    } else if (what == "command") {
        bool press = args.size() > 2 && args[2] == "press";
        bool unterminated = args.size() > 3 && args[3] == "unterminated";
        if (args.size() < 3 || (!press && args[2] != "release") ||
            (args.size() > 3 && !unterminated) || (unterminated && args[1].empty())) {
            return Usage("device command TEXT press|release [unterminated]");
        }
        event = Record(10);
        event.command.pressed = press ? 1 : 0;
        char* field = event.command.command;
        const std::size_t size = sizeof event.command.command;
        if (unterminated) {
            // The text over and over, to the field's last byte: no terminator anywhere.
            for (std::size_t i = 0; i < size; ++i) field[i] = args[1][i % args[1].size()];
        } else {
            std::strncpy(field, args[1].c_str(), size - 1);
        }
    } else if (what == "sync") {
        std::optional<long long> words[4] = {std::nullopt, std::nullopt, std::nullopt, 0};
        for (std::size_t i = 1; i < args.size() && i <= 4; ++i)
            words[i - 1] = WholeNumber<long long>(args[i]);
        if (args.size() < 4 || args.size() > 5 || !words[0] || !words[1] || !words[2] ||
            !words[3]) {
            return Usage("device sync KIND CODE VALUE [SYNCID]");
        }
        event = Record(11);
        event.sync.kind = static_cast<std::uint32_t>(*words[0]);
        event.sync.code = static_cast<std::uint32_t>(*words[1]);
        event.sync.value = static_cast<std::uint32_t>(*words[2]);
        event.sync.syncId = static_cast<std::uint32_t>(*words[3]);
    } else if (what == "motion") {
        std::optional<long long> values[7] = {
            std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt, 16};
        for (std::size_t i = 1; i < args.size() && i <= 7; ++i)
            values[i - 1] = WholeNumber<long long>(args[i]);
        if (args.size() < 7 || args.size() > 8 ||
            !std::all_of(std::begin(values), std::end(values),
                         [](auto& v) { return v.has_value(); })) {
            return Usage("device motion TX TY TZ RX RY RZ [PERIOD]");
        }
        event = Record(2);
        std::int32_t* fields[7] = {&event.motion.tx,    &event.motion.ty, &event.motion.tz,
                                   &event.motion.rx,    &event.motion.ry, &event.motion.rz,
                                   &event.motion.period};
        for (int i = 0; i < 7; ++i) *fields[i] = static_cast<std::int32_t>(*values[i]);
    } else if (what == "key") {
        auto key = args.size() > 1 ? WholeNumber<long long>(args[1]) : std::nullopt;
        bool down = args.size() > 2 && args[2] == "down";
        if (!key || args.size() != 3 || (!down && args[2] != "up")) {
            return Usage("device key KEY down|up");
        }
        event = Record(down ? 12 : 13);
        event.key.key = static_cast<std::uint32_t>(*key);
    } else if (what == "config-changed") {
        event = Record(19);
    } else if (what == "event") {
        auto type = args.size() > 1 ? WholeNumber<long long>(args[1]) : std::nullopt;
        if (!type) return Usage("device event TYPE");
        event = Record(static_cast<std::uint32_t>(*type));
    } else if (what == "garbage") {
        auto seed = args.size() > 1 ? WholeNumber<long long>(args[1]) : std::nullopt;
        if (!seed) return Usage("device garbage SEED");
        std::mt19937 random(static_cast<std::uint32_t>(*seed));
        auto* bytes = reinterpret_cast<unsigned char*>(&event);
        for (std::size_t i = 0; i < sizeof event; ++i)
            bytes[i] = static_cast<unsigned char>(random());
    } else {
        return m_runner.Fail("unknown device step '" + what + "'");
    }
    return true;
}

bool CDriverSteps::Device(const Words& args) {
    if (args.empty()) {
        return Usage(
            "device press|release|command|sync|motion|key|config-changed|event|garbage|road ...");
    }
    if (args[0] == "road") {
        if (args.size() < 2 || (args[1] != "window" && args[1] != "callback")) {
            return Usage("device road window|callback");
        }
        m_callbackRoad = args[1] == "callback";
        return true;
    }
    OxKvwEvent event;
    if (!MakeRecord(args, event)) return false;
    return Deliver(event);
}

bool CDriverSteps::Deliver(const OxKvwEvent& event) {
    auto* driver = Control();
    if (!driver) return false;
    std::string type = "record of type " + std::to_string(event.type);
    if (m_callbackRoad) {
        m_runner.Log("  " + type + " through the callback");
        std::int32_t result = driver->SimDriverCallEvent(&event);
        m_runner.Log(result == -2 ? "  no callback is registered"
                                  : "  the callback returned " + std::to_string(result));
        return true;
    }
    std::uint32_t connections = driver->SimDriverSendEvent(&event);
    m_runner.Log("  " + type + " sent to " + std::to_string(connections) + " connection(s)");
    // The plug-in handles a record inside the dispatch of its message, so once none waits it
    // is done with them all.
    ULONGLONG end = GetTickCount64() + kFetchWaitMs;
    for (;;) {
        CScenarioRunner::PumpPending();
        if (driver->Record("events-waiting") == "0") return true;
        ULONGLONG now = GetTickCount64();
        if (now >= end) break;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    }
    m_runner.Log("  " + driver->Record("events-waiting") + " record(s) still waiting");
    return true;
}

bool CDriverSteps::Expect(const std::string& what, const Words& args) {
    auto* driver = Control();
    if (!driver) return false;
    auto arg = [&](std::size_t i) { return i < args.size() ? args[i] : std::string(); };
    if (what == "driver-calls") {
        auto want = WholeNumber<long long>(arg(1));
        if (args.size() < 2 || !want) return Usage("expect driver-calls FUNCTION N");
        std::uint32_t calls = driver->SimDriverCallCount(args[0].c_str());
        return calls == *want ? true
                              : m_runner.Fail(args[0] + " was called " + std::to_string(calls) +
                                              " times, expected " + args[1]);
    }
    if (what == "driver-log" || what == "no-driver-log") {
        if (args.empty()) return Usage("expect [no-]driver-log TEXT");
        bool found = driver->Log().find(args[0]) != std::string::npos;
        if (found == (what == "driver-log")) return true;
        return m_runner.Fail(found ? "a driver call has \"" + args[0] + "\""
                                   : "no driver call with \"" + args[0] + "\"");
    }
    if (what == "driver-record") {
        if (args.empty()) return Usage("expect driver-record WHAT [LINE]");
        std::uint32_t size = driver->SimDriverReadRecord(args[0].c_str(), nullptr, 0);
        if (size == 0) return m_runner.Fail("the driver has no record '" + args[0] + "'");
        std::string text = driver->Record(args[0].c_str());
        if (args.size() < 2 || HasLine(text, args[1])) return true;
        return m_runner.Fail("the driver's " + args[0] + " has no line \"" + args[1] +
                             "\"; it holds \"" + text + "\"");
    }
    if (what == "driver-connections") {
        auto want = WholeNumber<long long>(arg(0));
        if (!want) return Usage("expect driver-connections N");
        std::uint32_t open = driver->SimDriverConnectionCount();
        return open == *want ? true
                             : m_runner.Fail("the driver has " + std::to_string(open) +
                                             " connection(s), expected " + args[0]);
    }
    return m_runner.Fail("unknown expectation '" + what + "'");
}

}  // namespace

void AddDriverSteps(CScenarioRunner& runner) {
    auto steps = std::make_shared<CDriverSteps>(runner);
    runner.AddVerb("driver", [steps](const Words& args) { return steps->Driver(args); });
    runner.AddVerb("device", [steps](const Words& args) { return steps->Device(args); });
    for (const char* what :
         {"driver-calls", "driver-log", "no-driver-log", "driver-record", "driver-connections"}) {
        runner.AddExpectation(
            what, [steps, what](const Words& args) { return steps->Expect(what, args); });
    }
}

}  // namespace sim
