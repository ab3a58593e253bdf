// The host's text files: parsing against merely reading the same bytes. A generated host
// installation of 5,000 command resource files, with and without a 1 MB language file, and a
// 10,000-line config.pro. The catalogue scan runs against the simulated host's command table;
// BM_CatalogueScanLanguageCost times the scan with and without the language file in the same
// iterations and reports their ratio; BM_ActionTreeAgainstScan the whole action tree (with
// 1,000 mapkeys) against the bare scan.
#include "catalogue/cmd_res.h"
#include "catalogue/halvane_folder.h"
#include "catalogue/mapkey_file.h"
#include "catalogue/pro_commands.h"
#include "core/action_tree.h"
#include "sim/host/session.h"
#include "support/os.h"
#include "toolkit/host_table.h"
#include "large_installation.h"

#include <benchmark/benchmark.h>

#include <chrono>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using qvx::bench::Installation;

Installation& TheInstallation() {
    static Installation installation;
    return installation;
}

void BM_ReadResourceFiles(benchmark::State& state) {
    auto& inst = TheInstallation();
    for (auto _ : state) {
        for (const auto& f : inst.resFiles) {
            benchmark::DoNotOptimize(qvx::os::ReadWholeFile(qvx::os::WidenUtf8(f)));
        }
    }
}
BENCHMARK(BM_ReadResourceFiles)->Unit(benchmark::kMillisecond);

void ParseAll(benchmark::State& state, bool language) {
    auto& inst = TheInstallation();
    inst.LanguageFile(language);
    qvx::os::SetEnv(L"LANG", language ? std::optional<std::wstring>(L"de") : std::nullopt);
    for (auto _ : state) {
        for (const auto& f : inst.resFiles) {
            CQvxProCmdRes res;
            res.Open(f);
            benchmark::DoNotOptimize(res.GetLabel());
            res.Close();
        }
    }
    qvx::os::SetEnv(L"LANG", std::nullopt);
}

void BM_ParseResourceFiles(benchmark::State& state) { ParseAll(state, false); }
BENCHMARK(BM_ParseResourceFiles)->Unit(benchmark::kMillisecond);

// A catalogue scan of the whole installation, as each build of the action tree makes it.
void ScanOnce(bool language) {
    auto& inst = TheInstallation();
    inst.LanguageFile(language);
    qvx::os::SetEnv(L"PRO_DIRECTORY", inst.root.wstring());
    qvx::os::SetEnv(L"LANG", language ? std::optional<std::wstring>(L"de") : std::nullopt);
    sim::CSession::Instance().Reset();
    qvx::toolkit::InstallHostTable(sim::CSession::Instance().Args());
    std::vector<CCommandEntry> commands;
    CProECommands().GetCommands(commands);
    if (commands.size() != inst.resFiles.size()) std::abort();
    benchmark::DoNotOptimize(commands);
    qvx::os::SetEnv(L"LANG", std::nullopt);
}

void BM_CatalogueScan(benchmark::State& state) {
    for (auto _ : state) ScanOnce(false);
}
BENCHMARK(BM_CatalogueScan)->Unit(benchmark::kMillisecond);

void BM_CatalogueScanWith1MbLanguageFile(benchmark::State& state) {
    for (auto _ : state) ScanOnce(true);
}
BENCHMARK(BM_CatalogueScanWith1MbLanguageFile)->Unit(benchmark::kMillisecond);

/// Times `bare` and then `measured` in each iteration and reports both means and their
/// ratio, so that the two figures always come from one run under one load.
template <typename Bare, typename Measured>
void TimeAgainst(benchmark::State& state, const char* bareName, Bare bare, const char* measuredName,
                 Measured measured) {
    using Clock = std::chrono::steady_clock;
    Clock::duration bareTime{}, measuredTime{};
    for (auto _ : state) {
        auto t0 = Clock::now();
        bare();
        auto t1 = Clock::now();
        measured();
        auto t2 = Clock::now();
        bareTime += t1 - t0;
        measuredTime += t2 - t1;
    }
    using Ms = std::chrono::duration<double, std::milli>;
    double n = static_cast<double>(state.iterations());
    state.counters[bareName] = Ms(bareTime).count() / n;
    state.counters[measuredName] = Ms(measuredTime).count() / n;
    state.counters["ratio"] = Ms(measuredTime).count() / Ms(bareTime).count();
}

void BM_CatalogueScanLanguageCost(benchmark::State& state) {
    TimeAgainst(
        state, "without_ms", [] { ScanOnce(false); }, "with_1MB_ms", [] { ScanOnce(true); });
}
BENCHMARK(BM_CatalogueScanLanguageCost)->Unit(benchmark::kMillisecond);

// The whole action tree of the installation with 1,000 mapkeys against the bare catalogue
// scan of the same files, timed in the same iterations.
void BM_ActionTreeAgainstScan(benchmark::State& state) {
    auto& inst = TheInstallation();
    const fs::path mapkeys = inst.root / "mapkeys.pro";
    {
        std::ofstream out(mapkeys);
        for (int i = 0; i < 1000; ++i) {
            out << "mapkey k" << i << " @MAPKEY_NAMETip " << i << ";@MAPKEY_LABELLabel " << i
                << ";~ Command `ProCmd" << i << "`;\n";
        }
    }
    ovklib::SetHalvaneInstallFolderOverride(std::wstring(L"/qvx"));
    TimeAgainst(
        state, "scan_ms", [] { ScanOnce(false); }, "tree_ms",
        [&] {
            qvx::os::SetEnv(L"PRO_DIRECTORY", inst.root.wstring());
            CProECommands catalogue;
            catalogue.SetMapkeyFiles({mapkeys.wstring()});
            std::unique_ptr<oxapp::CActionNode> root;
            std::vector<oxapp::COxImage> images;
            qvx::core::BuildActionTree(catalogue, root, images);
            benchmark::DoNotOptimize(root);
        });
}
BENCHMARK(BM_ActionTreeAgainstScan)->Unit(benchmark::kMillisecond);

void BM_ReadConfigPro(benchmark::State& state) {
    auto& inst = TheInstallation();
    for (auto _ : state) benchmark::DoNotOptimize(qvx::os::ReadWholeFile(inst.config.wstring()));
}
BENCHMARK(BM_ReadConfigPro)->Unit(benchmark::kMicrosecond);

void BM_ParseConfigPro(benchmark::State& state) {
    auto& inst = TheInstallation();
    ovklib::SetHalvaneInstallFolderOverride(std::wstring(L"/qvx"));
    for (auto _ : state) {
        CMapkeyMap map;
        CQvxProEMapkeyFile(inst.config.wstring()).Read(map);
        benchmark::DoNotOptimize(map);
    }
}
BENCHMARK(BM_ParseConfigPro)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
