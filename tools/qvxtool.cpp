// qvxtool: shows an administrator what the plug-in makes of the host's files.
//
//   qvxtool mapkeys [--install-dir DIR] FILE...
//       Reads the files in order into one map as the plug-in reads its configuration files
//       (later definitions win, an empty body erases, a file that cannot be opened is
//       skipped) and prints one line per mapkey: key, label, name, body.
//   qvxtool lint FILE...
//       Tells, with file and line, where the plug-in reads the files differently from what a
//       host user expects: lost continuation lines, commented-out definitions that still
//       count, definitions that a later one replaces or erases, empty keys.
//   qvxtool tree --install DIR [--known FILE] [CONFIG...]
//       Prints the action tree the plug-in would build for a host installed at DIR (also taken
//       as PRO_DIRECTORY), with the mapkeys of the CONFIG files read in order and, with
//       --known, only the host commands named in FILE (one a line) known to the host: one
//       line per node in pre-order, then one per image.
//   qvxtool resfile FILE
//       Parses one command resource file as the plug-in does (honouring LANG) and prints one
//       line: activate command, label, help text, description, bitmap, check-button flag.
#include "catalogue/cmd_res.h"
#include "catalogue/halvane_folder.h"
#include "catalogue/mapkey_file.h"
#include "support/os.h"
#include "action_tree_tool.h"
#include "mapkey_lint.h"
#include "tool_output.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

namespace {

int Usage() {
    std::fprintf(stderr,
                 "usage: qvxtool mapkeys [--install-dir DIR] FILE...\n"
                 "       qvxtool tree --install DIR [--known FILE] [CONFIG...]\n"
                 "       qvxtool resfile FILE\n"
                 "       qvxtool lint FILE...\n");
    return 2;
}

int Mapkeys(int argc, char** argv) {
    std::wstring installDir = qvx::os::CurrentDirectory();
    std::vector<std::wstring> files;
    for (int i = 0; i < argc; ++i) {
        if (std::strcmp(argv[i], "--install-dir") == 0 && i + 1 < argc) {
            installDir = qvx::os::WidenUtf8(argv[++i]);
        } else {
            files.push_back(qvx::os::WidenUtf8(argv[i]));
        }
    }
    // The device software's folder only names the mapkeys' picture; the tool supplies it so
    // that the reading never stops for want of it.
    ovklib::SetHalvaneInstallFolderOverride(installDir);
    CMapkeyMap map;
    for (const std::wstring& file : files) CQvxProEMapkeyFile(file).Read(map);
    std::string out;
    for (const auto& [key, entry] : map) {
        out += qvx::tool::EscapeField(key) + '\t' +
               qvx::tool::EscapeField(qvx::os::NarrowUtf8(entry.first.GetLabel())) + '\t' +
               qvx::tool::EscapeField(qvx::os::NarrowUtf8(entry.first.GetTooltip())) + '\t' +
               qvx::tool::EscapeField(entry.second) + '\n';
    }
    std::fwrite(out.data(), 1, out.size(), stdout);
    return 0;
}

int ResFile(const char* path) {
    CQvxProCmdRes res;
    if (!res.Open(path)) return 1;
    using qvx::tool::EscapeField;
    std::string line = EscapeField(res.GetActivateCommand()) + '\t' + EscapeField(res.GetLabel()) +
                       '\t' + EscapeField(res.GetHelpText()) + '\t' +
                       EscapeField(res.GetDescription()) + '\t' + EscapeField(res.GetBitmap()) +
                       '\t' + (res.IsCheckButton() ? "1" : "0") + '\n';
    res.Close();
    std::fwrite(line.data(), 1, line.size(), stdout);
    return 0;
}

}  // namespace

int Tree(int argc, char** argv) {
    qvx::tool::CTreeOptions options;
    bool haveInstall = false;
    for (int i = 0; i < argc; ++i) {
        if (std::strcmp(argv[i], "--install") == 0 && i + 1 < argc) {
            options.installDir = argv[++i];
            haveInstall = true;
        } else if (std::strcmp(argv[i], "--known") == 0 && i + 1 < argc) {
            options.knownFile = argv[++i];
        } else {
            options.configFiles.push_back(argv[i]);
        }
    }
    if (!haveInstall) return Usage();
    std::string out = qvx::tool::ActionTreeLines(options);
    std::fwrite(out.data(), 1, out.size(), stdout);
    return 0;
}

int main(int argc, char** argv) {
    try {
        if (argc < 2) return Usage();
        if (std::strcmp(argv[1], "mapkeys") == 0) return Mapkeys(argc - 2, argv + 2);
        if (std::strcmp(argv[1], "tree") == 0) return Tree(argc - 2, argv + 2);
        if (std::strcmp(argv[1], "resfile") == 0 && argc == 3) return ResFile(argv[2]);
        if (std::strcmp(argv[1], "lint") == 0) {
            for (const std::string& finding :
                 qvx::tool::LintMapkeyFiles(std::vector<std::string>(argv + 2, argv + argc))) {
                std::printf("%s\n", finding.c_str());
            }
            return 0;
        }
        return Usage();
    } catch (const std::exception& e) {
        std::fprintf(stderr, "qvxtool: %s\n", e.what());
        return 1;
    }
}
