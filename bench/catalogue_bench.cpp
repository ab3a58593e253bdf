// The host's text files: parsing against merely reading the same bytes. A generated host
// installation of 5,000 command resource files (with and without a 1 MB language file that
// every parse loads afresh) and a 10,000-line config.pro.
#include "catalogue/cmd_res.h"
#include "catalogue/halvane_folder.h"
#include "catalogue/mapkey_file.h"
#include "support/os.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Installation {
    fs::path root = fs::temp_directory_path() / "qvx_bench_install";
    std::vector<std::string> resFiles;
    fs::path config;

    Installation() {
        fs::remove_all(root);
        fs::create_directories(root / "text" / "resource");
        for (int i = 0; i < 5000; ++i) {
            fs::path file = root / "text" / "resource" / ("procmd" + std::to_string(i) + ".res");
            std::ofstream(file) << "(CommandResource\n(Resources\n  (command.ActivateCommand \"ProCmd"
                                << i << "\")\n  (command.Label \"&Command " << i
                                << "\")\n  (command.HelpText \"Help for command " << i
                                << "\")\n  (command.Bitmap \"cmd" << i
                                << ".gif\")\n  (description.Label \"Description " << i
                                << "\")\n  (other.Key \"value\")\n)\n)\n";
            resFiles.push_back(file.string());
        }
        config = root / "config.pro";
        std::ofstream out(config);
        for (int i = 0; i < 10000; ++i) {
            if (i % 3 == 2) {
                out << "mapkey(continued) ~ Command `ProCmdMore" << i << "`;\n";
            } else if (i % 3 == 1) {
                out << "mapkey k" << i << " @MAPKEY_NAMEName " << i << ";@MAPKEY_LABELLabel " << i
                    << ";~ Command `ProCmd" << i << "`;\\\n";
            } else {
                out << "display_mode shade\n";
            }
        }
    }
    ~Installation() {
        std::error_code ec;
        fs::remove_all(root, ec);
    }
    void LanguageFile(bool present) {
        fs::path file = root / "text" / "resource.txt";
        if (!present) {
            fs::remove(file);
            return;
        }
        std::ofstream out(file);
        while (out.tellp() < 1'000'000) out << "Some other text of the language file\nIts line\n";
        out << "&Command 4999\n&Befehl 4999\n";
    }
};

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

void BM_ParseResourceFilesWith1MbLanguageFile(benchmark::State& state) { ParseAll(state, true); }
BENCHMARK(BM_ParseResourceFilesWith1MbLanguageFile)->Unit(benchmark::kMillisecond)->Iterations(1);

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
