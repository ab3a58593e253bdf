// A generated host installation the size of a large site, shared by the benchmarks: 5,000
// command resource files, a 1 MB language file and a long config.pro full of mapkeys.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

namespace qvx::bench {

namespace fs = std::filesystem;

struct Installation {
    fs::path root;
    std::vector<std::string> resFiles;
    fs::path config;

    /// A host installation under `at`: 5,000 command resource files in text/resource, a 1 MB
    /// language file beside them (written switched off, see LanguageFile) and `configLines`
    /// lines of config.pro, a third of them mapkeys, at `config` (the installation's own
    /// text/config.pro when `configInText`, else its top folder).
    explicit Installation(fs::path at = fs::temp_directory_path() / "qvx_bench_install",
                          int configLines = 10000, bool configInText = false)
        : root(std::move(at)) {
        fs::remove_all(root);
        fs::create_directories(root / "text" / "resource");
        for (int i = 0; i < 5000; ++i) {
            fs::path file = root / "text" / "resource" / ("procmd" + std::to_string(i) + ".res");
            std::ofstream(file)
                << "(CommandResource\n(Resources\n  (command.ActivateCommand \"ProCmd" << i
                << "\")\n  (command.Label \"&Command " << i
                << "\")\n  (command.HelpText \"Help for command " << i
                << "\")\n  (command.Bitmap \"cmd" << i
                << ".gif\")\n  (description.Label \"Description " << i
                << "\")\n  (other.Key \"value\")\n)\n)\n";
            resFiles.push_back(file.string());
        }
        WriteLanguageFile();
        config = configInText ? root / "text" / "config.pro" : root / "config.pro";
        WriteConfigPro(config, configLines, "k");
    }
    /// `lines` lines of a config.pro, a third of them mapkeys named `prefix` and a number,
    /// each with a continuation line, the rest other options.
    static void WriteConfigPro(const fs::path& path, int lines, const std::string& prefix) {
        std::ofstream out(path);
        for (int i = 0; i < lines; ++i) {
            if (i % 3 == 2) {
                out << "mapkey(continued) ~ Command `ProCmdMore" << i << "`;\n";
            } else if (i % 3 == 1) {
                out << "mapkey " << prefix << i << " @MAPKEY_NAMEName " << i
                    << ";@MAPKEY_LABELLabel " << i << ";~ Command `ProCmd" << i << "`;\\\n";
            } else {
                out << "display_mode shade\n";
            }
        }
    }
    ~Installation() {
        std::error_code ec;
        fs::remove_all(root, ec);
    }
    // The language file is written once and switched on and off by renaming it, so that
    // the timings hold the scans only.
    fs::path languageOn() const { return root / "text" / "resource.txt"; }
    fs::path languageOff() const { return root / "text" / "resource.off"; }
    void WriteLanguageFile() {
        // Filler with a translation of every tenth label and help text spread through it;
        // the other keys occur nowhere, so finding that out reads the whole text.
        std::ofstream out(languageOff());
        int i = 0;
        while (out.tellp() < 1'000'000) {
            out << "Some other text of the language file\nIts line\n";
            if (i < 5000 && out.tellp() % 2000 < 48) {
                out << "&Command " << i << "\n&Befehl " << i << "\nHelp for command " << i
                    << "\nHilfe zu Befehl " << i << "\n";
                i += 10;
            }
        }
    }
    void LanguageFile(bool present) {
        std::error_code ec;
        if (present) {
            fs::rename(languageOff(), languageOn(), ec);
        } else {
            fs::rename(languageOn(), languageOff(), ec);
        }
    }
};

}  // namespace qvx::bench
