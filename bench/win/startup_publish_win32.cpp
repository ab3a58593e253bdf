// Time from the host's load call to the first action tree the driver holds, for the sample
// installation and two large ones (5,000 command resource files, a 1 MB language file, and
// 1,000 mapkeys or three config.pro files of 10,000 lines), against merely reading the same
// files; and the cost of a change to a mode already published, through the host's
// notification, against the bare driver call it ends in. The real plug-in DLL runs in this
// process with the simulated host and driver, as in qvxhost.
//
//   bench_startup_publish.exe
#include "catalogue/pro_commands.h"
#include "core/action_tree.h"
#include "large_installation.h"
#include "plugin_in_process.h"
#include "sim/driver/control_api_win32.h"
#include "sim/host/session.h"
#include "sim_driver_path.h"
#include "support/os.h"
#include "support/registry.h"
#include "support/win32_handles.h"
#include "toolkit/host_table.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

namespace {

using qvx::bench::BesideExe;
using qvx::bench::CPlugin;

using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

double BestMs(int rounds, const std::function<void()>& one) {
    double best = 1e300;
    for (int i = 0; i < rounds; ++i) {
        auto start = Clock::now();
        one();
        best =
            std::min(best, std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    return best;
}

/// Every file the start-up reads: the resource files, the language file, config.pro.
void ReadInstallation(const fs::path& root) {
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (!entry.is_regular_file()) continue;
        std::wstring name = entry.path().filename().wstring();
        if (name.rfind(L"procmd", 0) == 0 || name == L"resource.txt" || name == L"config.pro") {
            qvx::os::ReadWholeFile(entry.path().wstring());
        }
    }
}

void StartupRow(const char* name, const fs::path& root, qvx::simdriver::CSimDriverControl& driver) {
    qvx::os::SetEnv(L"PRO_DIRECTORY", root.wstring());
    CPlugin plugin;
    bool treeHeld = true;
    int mapkeys = 0;
    double load = BestMs(5, [&] {
        sim::CSession::Instance().Reset();
        plugin.Load();
        std::string tree = driver.Record("actions");
        treeHeld = treeHeld && !tree.empty();
        mapkeys = 0;
        for (std::size_t at = tree.find("\tProMacro "); at != std::string::npos;
             at = tree.find("\tProMacro ", at + 1)) {
            ++mapkeys;
        }
        plugin.Unload();
        driver.SimDriverReset();
    });
    double bare = BestMs(5, [&] { ReadInstallation(root); });
    // The same work in pieces, in this process: the command scan alone and the whole build.
    sim::CSession::Instance().Reset();
    qvx::toolkit::InstallHostTable(sim::CSession::Instance().Args());
    double scan = BestMs(3, [&] {
        std::vector<CCommandEntry> commands;
        CProECommands().GetCommands(commands);
    });
    double build = BestMs(3, [&] {
        CProECommands catalogue;
        std::unique_ptr<oxapp::CActionNode> tree;
        std::vector<oxapp::COxImage> images;
        qvx::core::BuildActionTree(catalogue, tree, images);
    });
    qvx::toolkit::InstallHostTable(nullptr);
    std::fprintf(stderr, "%-28s command scan %9.2f ms   whole tree build %9.2f ms\n", "", scan,
                 build);
    std::fprintf(stderr,
                 "%-28s load to first tree %9.2f ms   bare read %8.2f ms   ratio %6.2f   "
                 "macros in the tree %d%s\n",
                 name, load, bare, load / bare, mapkeys,
                 treeHeld ? "" : "   (the driver held no tree!)");
}

}  // namespace

int wmain() {
    ovklib::CModuleHandle driverModule(LoadLibraryW(qvx::bench::SimDriverPath().c_str()));
    qvx::simdriver::CSimDriverControl driver;
    if (!driverModule || !driver.Bind(driverModule.Get())) {
        std::fprintf(stderr, "cannot load the simulated driver\n");
        return 1;
    }
    driver.SimDriverSetLogging(0);
    qvx::os::SetEnv(L"LANG", L"de");
    // Mapkeys carry the device software's picture and are read only when its folder is known.
    qvx::os::WriteRegistryString(qvx::os::RegistryRoot::LocalMachine, L"SOFTWARE\\Quorvex\\Halvane",
                                 L"Home Directory", fs::temp_directory_path().wstring());
    // The plug-in's diagnostics go to standard output and are not what is measured; the
    // figures go to standard error.
    std::freopen("NUL", "w", stdout);

    fs::path temp = fs::temp_directory_path();
    fs::path sample = temp / "qvx_bench_sample";
    fs::remove_all(sample);
    fs::copy(fs::path(L"Z:" + qvx::os::WidenUtf8(QVX_SAMPLE_INSTALL)), sample,
             fs::copy_options::recursive);
    StartupRow("sample installation", sample, driver);
    {
        qvx::bench::Installation large(temp / "qvx_bench_large", /*configLines=*/3000,
                                       /*configInText=*/true);
        large.LanguageFile(true);
        StartupRow("5,000 files, 1,000 mapkeys", large.root, driver);
    }
    {
        // The site of a large company: the installation's config.pro, the user's and the
        // working folder's, 10,000 lines each with mapkeys of their own names.
        qvx::bench::Installation large(temp / "qvx_bench_large", /*configLines=*/10000,
                                       /*configInText=*/true);
        large.LanguageFile(true);
        fs::create_directories(large.root / "home");
        fs::create_directories(large.root / "work");
        qvx::bench::Installation::WriteConfigPro(large.root / "home" / "config.pro", 10000, "h");
        qvx::bench::Installation::WriteConfigPro(large.root / "work" / "config.pro", 10000, "w");
        const fs::path before = fs::current_path();
        const auto home = qvx::os::GetEnv(L"HOME");
        qvx::os::SetEnv(L"HOME", (large.root / "home").wstring());
        fs::current_path(large.root / "work");
        StartupRow("5,000 files, 3 x 10,000 lines", large.root, driver);
        fs::current_path(before);
        qvx::os::SetEnv(L"HOME", home);
    }

    // A change between two modes already published: the host's window-change notification,
    // the mode evaluation and the driver's activation, against the driver's activation alone.
    qvx::os::SetEnv(L"PRO_DIRECTORY", sample.wstring());
    sim::CSession& host = sim::CSession::Instance();
    host.Reset();
    CPlugin plugin;
    plugin.Load();
    host.OpenModel("block.prt", sim::kModelPart);
    host.OpenModel("sheet.drw", sim::kModelDrawing);
    using Activate = std::int32_t (*)(std::uint32_t, const char*);
    auto activate = reinterpret_cast<Activate>(
        reinterpret_cast<void*>(GetProcAddress(driverModule.Get(), "OxAppCmdActivateActionSet")));
    constexpr int kChanges = 20000;
    double viaHost = BestMs(5, [&] {
        for (int i = 0; i < kChanges; ++i) {
            host.forcedMode = (i & 1) ? 6 : 1;
            host.Notify(24);
        }
    });
    double bareCall = BestMs(5, [&] {
        for (int i = 0; i < kChanges; ++i)
            activate(1, (i & 1) ? "PRO_MODE_DRAWING" : "PRO_MODE_PART");
    });
    std::uint32_t trees = driver.SimDriverCallCount("OxAppCmdWriteActions");
    plugin.Unload();
    std::fprintf(
        stderr,
        "%-28s %9.3f us per change   bare driver call %7.3f us   ratio %6.2f   trees sent %u\n",
        "change to a known mode", viaHost * 1000 / kChanges, bareCall * 1000 / kChanges,
        viaHost / bareCall, trees);
    fs::remove_all(sample);
    return 0;
}
