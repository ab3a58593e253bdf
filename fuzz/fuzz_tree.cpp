// Any bytes as a host installation: the first part a config.pro, the others command resource
// files (parts split at "\n====\n"). The action tree built from it must hold every command
// whose name holds "ProCmd" in exactly one category, and every record's texts must be its
// node's own.
#include "catalogue/pro_commands.h"
#include "client/oxapp/action_tree_text.h"
#include "core/action_tree.h"
#include "support/os.h"
#include "toolkit/host_table.h"
#include "toolkit/pro_types.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace qvx {
// The tree's category texts do not matter here.
std::wstring LoadText(std::uint32_t id) { return L"text " + std::to_wstring(id); }
}  // namespace qvx

namespace {

namespace fs = std::filesystem;

ProError KnowsEveryCommand(const char* name, uiCmdCmdId* id) {
    if (!name || !id) return PRO_TK_BAD_INPUTS;
    *id = reinterpret_cast<uiCmdCmdId>(static_cast<std::uintptr_t>(1));
    return PRO_TK_NO_ERROR;
}

void Check(bool ok) {
    if (!ok) std::abort();
}

/// A record's text pointer is null or its node's own characters.
void CheckTexts(const oxapp::CActionNode& node) {
    const oxActionNodeEx_s& r = *node.Record();
    Check(!r.id || (r.id == node.Id().c_str()));
    Check(!r.label || (r.label == node.Label().c_str()));
    Check(!r.description || (r.description == node.Description().c_str()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fs::path root = fs::temp_directory_path() / "qvx_fuzz_tree";
    static bool ready = [] {
        static const QvxHostFunction functions[] = {
            {"ProCmdCmdIdFind_v", reinterpret_cast<void*>(&KnowsEveryCommand)},
        };
        static QvxToolkitArgs args{};
        args.structSize = sizeof args;
        args.functions = functions;
        args.functionCount = 1;
        args.wcharSize = sizeof(wchar_t);
        qvx::toolkit::InstallHostTable(&args);
        qvx::os::SetEnv(L"PRO_DIRECTORY", qvx::os::WidenUtf8(root.string()));
        return true;
    }();
    (void)ready;
    std::error_code ec;
    fs::remove_all(root, ec);
    fs::create_directories(root / "text" / "resource", ec);

    std::string text(reinterpret_cast<const char*>(data), size);
    std::size_t start = 0;
    for (int part = 0; part < 9 && start <= text.size(); ++part) {
        std::size_t end = text.find("\n====\n", start);
        if (end == std::string::npos) end = text.size();
        fs::path file =
            part == 0 ? root / "config.pro"
                      : root / "text" / "resource" / ("procmd" + std::to_string(part) + ".res");
        std::ofstream(file, std::ios::binary) << text.substr(start, end - start);
        start = end + 6;
    }

    CProECommands catalogue;
    catalogue.SetMapkeyFiles({qvx::os::WidenUtf8((root / "config.pro").string())});
    std::vector<CCommandEntry> commands;
    catalogue.GetCommands(commands);
    std::unique_ptr<oxapp::CActionNode> tree;
    std::vector<oxapp::COxImage> images;
    qvx::core::BuildActionTree(catalogue, tree, images);
    Check(tree != nullptr);

    // Categories come after the markup and the mapkeys; their leaves are host commands.
    std::map<std::string, int> placed;
    for (const oxapp::CActionNode* category = tree->Children(); category;
         category = category->Next()) {
        CheckTexts(*category);
        const bool commandsBelow =
            category->Id() != "text 295_id" && category->Id() != "mapkeys_id";
        for (const oxapp::CActionNode* leaf = category->Children(); leaf; leaf = leaf->Next()) {
            CheckTexts(*leaf);
            if (commandsBelow) ++placed[leaf->Id()];
        }
    }
    std::size_t expected = 0;
    for (const CCommandEntry& command : commands) {
        if (command.first.find("ProCmd") == std::string::npos) continue;
        ++expected;
        Check(placed[command.second.ToIdentifier()] == 1);
    }
    std::size_t total = 0;
    for (const auto& [id, count] : placed) total += static_cast<std::size_t>(count);
    Check(total == expected);
    auto records = oxapp::ImageRecords(images);
    Check(!oxapp::ActionTreeText(tree->Record(), records.data(), records.size()).empty());
    return 0;
}
