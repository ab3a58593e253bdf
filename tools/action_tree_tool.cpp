#include "action_tree_tool.h"

#include "catalogue/halvane_folder.h"
#include "catalogue/pro_commands.h"
#include "client/oxapp/action_tree_text.h"
#include "core/action_tree.h"
#include "support/language_id.h"
#include "support/os.h"
#include "toolkit/host_table.h"
#include "toolkit/pro_types.h"

#include <cstdint>
#include <set>

namespace qvx::tool {
namespace {

// The host the tool stands in for knows these command names (all of them when unset).
bool g_knowsAll = true;
std::set<std::string> g_known;

ProError FindCommandId(const char* name, uiCmdCmdId* id) {
    if (!name || !id) return PRO_TK_BAD_INPUTS;
    if (!g_knowsAll && !g_known.count(name)) return PRO_TK_E_NOT_FOUND;
    *id = reinterpret_cast<uiCmdCmdId>(static_cast<std::uintptr_t>(1));
    return PRO_TK_NO_ERROR;
}

void ReadKnownNames(const std::string& file) {
    g_knowsAll = false;
    g_known.clear();
    auto bytes = os::ReadWholeFile(os::WidenUtf8(file));
    if (!bytes) return;
    std::string text(bytes->Data(), bytes->Length());
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        std::string name = text.substr(start, end - start);
        if (!name.empty() && name.back() == '\r') name.pop_back();
        if (!name.empty()) g_known.insert(name);
        start = end + 1;
    }
}

}  // namespace

std::string ActionTreeLines(const CTreeOptions& options) {
    const std::wstring installDir = os::WidenUtf8(options.installDir);
    os::SetEnv(L"PRO_DIRECTORY", installDir);
    g_langId = 0x0409;
    if (!options.knownFile.empty()) ReadKnownNames(options.knownFile);

    // The one host function the catalogue asks, answered by the tool.
    static const QvxHostFunction functions[] = {
        {"ProCmdCmdIdFind_v", reinterpret_cast<void*>(&FindCommandId)},
    };
    QvxToolkitArgs args{};
    args.structSize = sizeof args;
    args.functions = functions;
    args.functionCount = 1;
    args.wcharSize = sizeof(wchar_t);
    toolkit::InstallHostTable(&args);

    // The mapkeys' picture lies in the device software's folder; as for `mapkeys`, the
    // current folder stands in for it.
    ovklib::SetHalvaneInstallFolderOverride(os::CurrentDirectory());
    CProECommands catalogue;
    std::vector<std::wstring> configs;
    for (const std::string& file : options.configFiles) configs.push_back(os::WidenUtf8(file));
    catalogue.SetMapkeyFiles(configs);

    std::unique_ptr<oxapp::CActionNode> root;
    std::vector<oxapp::COxImage> images;
    core::BuildActionTree(catalogue, root, images);
    std::vector<oxImage_t> records = oxapp::ImageRecords(images);
    std::string lines = oxapp::ActionTreeText(oxapp::CActionNode::RecordOf(root.get()),
                                              records.data(), records.size());
    toolkit::InstallHostTable(nullptr);
    return lines;
}

}  // namespace qvx::tool
