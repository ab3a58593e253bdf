#include "core/action_tree.h"

#include "catalogue/action.h"
#include "catalogue/pro_commands.h"
#include "support/os.h"
#include "support/text_table.h"

#include <array>
#include <map>
#include <stdexcept>
#include <string>

namespace qvx::core {
namespace {

using oxapp::CActionNode;

constexpr std::uint32_t kMarkupLabel = 295;
constexpr std::uint32_t kMapkeysLabel = 296;

struct CMarkupMacro {
    const wchar_t* text;
    std::uint32_t label;
};

// The markup macros in the order the category shows them.
constexpr std::array<CMarkupMacro, 10> kMarkupMacros = {{
    {L"#NOTE", 801},
    {L"#ARROW", 802},
    {L"#CURVE", 803},
    {L"#SKETCH", 804},
    {L"#LINE", 805},
    {L"#MOVE", 806},
    {L"#MODIFY", 807},
    {L"#DELETE", 808},
    {L"#SETUP", 809},
    {L"##DONE/RETURN", 810},
}};

std::string Utf8(const std::wstring& text) { return os::NarrowUtf8(text); }

/// Puts `node` at the head of the chain `head`; the chain so reads in reverse order of making.
void PushFront(CActionNode*& head, CActionNode* node) {
    node->SetNext(head);
    head = node;
}

/// Where a build collects the icons it finds, what the icon folders held at its start, and
/// where each picture name was found (empty: nowhere). Every mapkey names the same picture, so
/// a build looks each name up once.
struct CIcons {
    std::vector<oxapp::COxImage>& images;
    catalogue::CFolderListing folders;
    std::map<std::wstring, std::wstring> found;
};

/// Records the icon of an action whose leaf has `id`, when the action names one that is found.
void CollectIcon(const CAction& action, const std::string& id, CIcons& icons) {
    if (action.GetImage().empty()) return;
    auto known = icons.found.find(action.GetImage());
    if (known == icons.found.end()) {
        std::wstring located;
        CProECommands::FindIcon(located, Utf8(action.GetImage()), &icons.folders);
        known = icons.found.emplace(action.GetImage(), std::move(located)).first;
    }
    const std::wstring& path = known->second;
    if (path.empty()) return;
    try {
        oxapp::COxImage image;
        image.SetId(id.c_str());
        image.SetFile(Utf8(path).c_str(), /*index=*/0);
        icons.images.push_back(std::move(image));
    } catch (const std::runtime_error&) {
        // The picture is dropped; the action stays in the tree without it.
    }
}

/// A leaf for `action`, with `label` shown for it, and its icon collected.
CActionNode* MakeLeaf(const CAction& action, const std::string& label, CIcons& icons) {
    std::string id = action.ToIdentifier();
    auto* leaf =
        new CActionNode(id.c_str(), label.c_str(), Utf8(action.GetTooltip()).c_str(), kOxAction);
    CollectIcon(action, id, icons);
    return leaf;
}

CActionNode* MarkupCategory() {
    const std::string label = Utf8(LoadText(kMarkupLabel));
    auto* category = new CActionNode((label + "_id").c_str(), label.c_str(), kOxActionCategory);
    CActionNode* head = nullptr;
    for (auto row = kMarkupMacros.rbegin(); row != kMarkupMacros.rend(); ++row) {
        CAction macro(row->text, LoadText(row->label), CAction::kProMacro, L"", L"");
        std::string id = macro.ToIdentifier();
        PushFront(head, new CActionNode(id.c_str(), Utf8(macro.GetLabel()).c_str(), "", kOxAction));
    }
    category->SetChildren(head);
    return category;
}

CActionNode* MapkeysCategory(CProECommands& catalogue, CIcons& icons) {
    std::vector<CMapkeyEntry> mapkeys;
    if (!catalogue.GetMapkeys(mapkeys)) return nullptr;
    const std::string label = Utf8(LoadText(kMapkeysLabel));
    auto* category = new CActionNode("mapkeys_id", label.c_str(), kOxActionCategory);
    CActionNode* head = nullptr;
    for (const CMapkeyEntry& entry : mapkeys) {
        const CAction& action = entry.first;
        std::wstring keys = action.GetText();
        if (!keys.empty() && keys.front() == L'$') keys.erase(0, 1);
        PushFront(head, MakeLeaf(action, Utf8(action.GetLabel()) + " (" + Utf8(keys) + ")", icons));
    }
    category->SetChildren(head);
    return category;
}

void AppendCommandCategories(CProECommands& catalogue, CActionNode& root, CIcons& icons) {
    std::map<std::string, std::string> categories;
    CProECommands::LoadCategories(categories);
    std::vector<CCommandEntry> commands;
    catalogue.GetCommands(commands);
    // Greatest key first: the empty key, which every command name with "ProCmd" fits, comes
    // last and takes what the others left. A claimed command stays where it is in the list
    // and is only marked, so nothing is copied.
    std::vector<bool> claimed(commands.size(), false);
    for (auto it = categories.rbegin(); it != categories.rend(); ++it) {
        const std::string needle = "ProCmd" + it->first;
        CActionNode* head = nullptr;
        for (std::size_t i = 0; i < commands.size(); ++i) {
            if (claimed[i] || commands[i].first.find(needle) == std::string::npos) continue;
            claimed[i] = true;
            const CAction& action = commands[i].second;
            PushFront(head, MakeLeaf(action, Utf8(action.GetLabel()), icons));
        }
        auto* category =
            new CActionNode((it->first + "_id").c_str(), it->second.c_str(), kOxActionCategory);
        category->SetChildren(head);
        root.AppendChild(category);
    }
}

}  // namespace

void BuildActionTree(CProECommands& catalogue, std::unique_ptr<CActionNode>& root,
                     std::vector<oxapp::COxImage>& images) {
    root.reset();
    root = std::make_unique<CActionNode>(kDefaultActionSetId, kDefaultActionSetLabel, kOxActionSet);
    root->AppendChild(MarkupCategory());
    // The folders an icon is searched in are listed once for the whole build.
    std::vector<std::wstring> folders = CProECommands::IconFolders();
    folders.push_back(os::CurrentDirectory());
    CIcons icons{images, catalogue::CFolderListing(folders), {}};
    if (CActionNode* mapkeys = MapkeysCategory(catalogue, icons)) root->AppendChild(mapkeys);
    AppendCommandCategories(catalogue, *root, icons);
}

}  // namespace qvx::core
