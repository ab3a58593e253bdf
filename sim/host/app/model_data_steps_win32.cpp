// Scenario steps that set the current model's data: where its file lies and whether it was
// saved, the machine it came from, its material, mass properties, units and type.
#include "runner_win32.h"

#include "sim/host/session.h"
#include "support/os.h"

#include <filesystem>
#include <fstream>

namespace sim {
namespace {

constexpr const char* kUsage =
    "usage: model open|close|folder PATH|host NAME|version N|save [BYTES]|"
    "material NAME DENSITY UNIT|material none|mass VOLUME DENSITY MASS|mass none|"
    "units MASS LENGTH|type N";

std::optional<double> Real(const std::string& word) { return WholeNumber<double>(word); }

}  // namespace

bool ModelDataStep(CScenarioRunner& runner, const std::vector<std::string>& args) {
    CSession& s = CSession::Instance();
    if (args.empty()) return runner.Fail(kUsage);
    if (!s.model) return runner.Fail("no model is open");
    CModel& model = *s.model;
    const std::string& what = args[0];
    auto arg = [&](std::size_t i) { return i < args.size() ? args[i] : std::string(); };
    if (what == "folder" && args.size() == 2) {
        // "C:\models" is the drive "C" and the path "\models".
        std::wstring path = qvx::os::WidenUtf8(args[1]);
        std::size_t colon = path.find(L':');
        model.device = colon == std::wstring::npos ? L"" : path.substr(0, colon);
        model.folder = colon == std::wstring::npos ? path : path.substr(colon + 1);
    } else if (what == "host" && args.size() == 2) {
        model.host = qvx::os::WidenUtf8(args[1]);
    } else if (what == "version" && WholeNumber<int>(arg(1))) {
        model.version = *WholeNumber<int>(args[1]);
    } else if (what == "save") {
        // The host writes the next version beside the others: name.ext.version.
        auto bytes = args.size() > 1 ? WholeNumber<long>(args[1]) : std::optional<long>(1234);
        if (!bytes || *bytes < 0 || model.folder.empty()) {
            return runner.Fail("usage: model save [BYTES], after model folder PATH");
        }
        ++model.version;
        std::wstring folder = (model.device.empty() ? L"" : model.device + L":") + model.folder;
        std::string lower;
        for (char c : model.name)
            lower += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        std::filesystem::path file =
            std::filesystem::path(folder) /
            (qvx::os::WidenUtf8(lower) + L"." + std::to_wstring(model.version));
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << std::string(static_cast<std::size_t>(*bytes), 'x');
        runner.Log("  saved " + qvx::os::NarrowUtf8(file.wstring()));
    } else if (what == "material" && args.size() == 2 && args[1] == "none") {
        model.material.reset();
    } else if (what == "material" && args.size() == 4 && Real(args[2])) {
        model.material =
            CMaterial{qvx::os::WidenUtf8(args[1]), *Real(args[2]), qvx::os::WidenUtf8(args[3])};
    } else if (what == "mass" && args.size() == 2 && args[1] == "none") {
        model.mass.reset();
    } else if (what == "mass" && args.size() == 4 && Real(args[1]) && Real(args[2]) &&
               Real(args[3])) {
        model.mass = CMassProperties{*Real(args[1]), *Real(args[2]), *Real(args[3])};
    } else if (what == "units" && args.size() == 3) {
        model.massUnit = qvx::os::WidenUtf8(args[1]);
        model.lengthUnit = qvx::os::WidenUtf8(args[2]);
    } else if (what == "type" && WholeNumber<int>(arg(1))) {
        model.type = *WholeNumber<int>(args[1]);
    } else {
        return runner.Fail(kUsage);
    }
    return true;
}

}  // namespace sim
