// The `expect` steps: what the host, the file system and standard output must show now.
#include "runner_win32.h"

#include "sim/host/session.h"
#include "support/os.h"

#include <algorithm>
#include <filesystem>

namespace sim {
namespace {

bool Contains(const std::vector<std::string>& lines, const std::string& part) {
    return std::any_of(lines.begin(), lines.end(),
                       [&](const std::string& l) { return l.find(part) != std::string::npos; });
}

}  // namespace

bool CScenarioRunner::ExpectStep(const std::vector<std::string>& args) {
    const CSession& host = CSession::Instance();
    const std::string& what = args[0];
    auto arg = [&](std::size_t i) -> const std::string& {
        static const std::string empty;
        return i < args.size() ? args[i] : empty;
    };
    auto path = [&](std::size_t i) { return std::filesystem::path(qvx::os::WidenUtf8(arg(i))); };

    auto extra = m_expectations.find(what);
    if (extra != m_expectations.end()) {
        return extra->second(std::vector<std::string>(args.begin() + 1, args.end()));
    }
    if (what == "message") {
        // Some text shown in the message area equals the argument.
        return std::find(host.messages.begin(), host.messages.end(), arg(1)) != host.messages.end()
                   ? true
                   : Fail("no message \"" + arg(1) + "\" in the message area");
    }
    if (what == "messages") {
        std::size_t want = std::stoul(arg(1));
        return host.messages.size() == want
                   ? true
                   : Fail("message area holds " + std::to_string(host.messages.size()) +
                          " texts, expected " + arg(1));
    }
    if (what == "call") {
        return Contains(host.calls, arg(1)) ? true : Fail("no host call with \"" + arg(1) + "\"");
    }
    if (what == "no-call") {
        return !Contains(host.calls, arg(1)) ? true : Fail("a host call has \"" + arg(1) + "\"");
    }
    if (what == "stdout") {
        return CapturedStdout().find(arg(1)) != std::string::npos
                   ? true
                   : Fail("standard output lacks \"" + arg(1) + "\"");
    }
    if (what == "no-stdout") {
        return CapturedStdout().find(arg(1)) == std::string::npos
                   ? true
                   : Fail("standard output has \"" + arg(1) + "\"");
    }
    if (what == "config") {
        auto found = host.configOptions.find(qvx::os::WidenUtf8(arg(1)));
        if (found == host.configOptions.end()) return Fail("the host has no option " + arg(1));
        std::string value = qvx::os::NarrowUtf8(found->second);
        return value == arg(2) ? true : Fail("option " + arg(1) + " is \"" + value + "\"");
    }
    if (what == "cursor") {
        POINT p{};
        if (!m_graphics.Window() || !GetCursorPos(&p) || !ScreenToClient(m_graphics.Window(), &p)) {
            return Fail("the cursor needs the graphics window");
        }
        return std::to_string(p.x) == arg(1) && std::to_string(p.y) == arg(2)
                   ? true
                   : Fail("the cursor is at " + std::to_string(p.x) + " " + std::to_string(p.y));
    }
    if (what == "errbuf") {
        return arg(1) == host.errorText
                   ? true
                   : Fail("error buffer holds \"" + std::string(host.errorText) + "\"");
    }
    std::error_code ec;
    if (what == "file") {
        return std::filesystem::is_regular_file(path(1), ec) ? true : Fail("no file " + arg(1));
    }
    if (what == "dir") {
        return std::filesystem::is_directory(path(1), ec) ? true : Fail("no folder " + arg(1));
    }
    if (what == "no-file") {
        return !std::filesystem::exists(path(1), ec) ? true : Fail(arg(1) + " exists");
    }
    if (what == "file-contains") {
        auto bytes = qvx::os::ReadWholeFile(path(1).wstring());
        if (!bytes) return Fail("cannot read " + arg(1));
        return std::string(bytes->Data(), bytes->Length()).find(arg(2)) != std::string::npos
                   ? true
                   : Fail(arg(1) + " lacks \"" + arg(2) + "\"");
    }
    return Fail("unknown expectation '" + what + "'");
}

}  // namespace sim
