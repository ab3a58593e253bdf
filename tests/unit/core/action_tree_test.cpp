// The action tree built from a small installation written by the test.
#include "catalogue/halvane_folder.h"
#include "catalogue/pro_commands.h"
#include "core/action_tree.h"
#include "sim/host/session.h"
#include "support/os.h"
#include "toolkit/host_table.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <vector>

namespace qvx::testing {
namespace {

namespace fs = std::filesystem;
using oxapp::CActionNode;

class ActionTreeTest : public ::testing::Test {
protected:
    void SetUp() override {
        fs::remove_all(m_root);
        fs::create_directories(m_root / "text" / "resource");
        os::SetEnv(L"PRO_DIRECTORY", os::WidenUtf8(m_root.string()));
        os::SetEnv(L"LANG", std::nullopt);
        ovklib::SetHalvaneInstallFolderOverride(os::WidenUtf8(m_root.string()));
        sim::CSession::Instance().Reset();
        toolkit::InstallHostTable(sim::CSession::Instance().Args());
    }
    void TearDown() override {
        toolkit::InstallHostTable(nullptr);
        ovklib::SetHalvaneInstallFolderOverride(std::nullopt);
        os::SetEnv(L"PRO_DIRECTORY", std::nullopt);
        fs::remove_all(m_root);
    }

    void Command(const std::string& file, const std::string& name, const std::string& bitmap) {
        std::ofstream(m_root / "text" / "resource" / file)
            << "(Resources (command.ActivateCommand \"" << name << "\") (command.Label \"" << name
            << "\") (command.Bitmap \"" << bitmap << "\"))\n";
    }
    void Build(const std::vector<std::wstring>& configs = {}) {
        CProECommands catalogue;
        catalogue.SetMapkeyFiles(configs);
        core::BuildActionTree(catalogue, m_tree, m_images);
    }
    /// The category with `id` under the root, or null.
    const CActionNode* Category(const std::string& id) const {
        for (const CActionNode* c = m_tree->Children(); c; c = c->Next())
            if (c->Id() == id) return c;
        return nullptr;
    }
    static std::vector<std::string> Labels(const CActionNode* category) {
        std::vector<std::string> labels;
        for (const CActionNode* leaf = category ? category->Children() : nullptr; leaf;
             leaf = leaf->Next())
            labels.push_back(leaf->Label());
        return labels;
    }

    fs::path m_root = fs::temp_directory_path() / "qvx_action_tree_test";
    std::unique_ptr<CActionNode> m_tree;
    std::vector<oxapp::COxImage> m_images;
};

TEST_F(ActionTreeTest, CommandsGoToTheGreatestFittingKeyAndTheRestToTheEmptyOne) {
    Command("procmd1.res", "ProCmdViewFileOpen", "");
    Command("procmd2.res", "ProCmdview", "");
    Command("procmd3.res", "ProCmdFileSave", "");
    Command("procmd4.res", "NoPrefix", "");
    Build();
    ASSERT_TRUE(m_tree);
    EXPECT_EQ(m_tree->Id(), "Default");
    EXPECT_EQ(m_tree->Children()->Id(), "Markup_id");
    EXPECT_EQ(Labels(m_tree->Children()).front(), "Note");
    EXPECT_EQ(Category("mapkeys_id"), nullptr) << "no mapkeys, no category";
    EXPECT_EQ(Labels(Category("View_id")), std::vector<std::string>{"ProCmdViewFileOpen"});
    EXPECT_EQ(Labels(Category("File_id")), std::vector<std::string>{"ProCmdFileSave"});
    ASSERT_NE(Category("_id"), nullptr);
    EXPECT_EQ(Category("_id")->Label(), "All Commands");
    EXPECT_EQ(Labels(Category("_id")), std::vector<std::string>{"ProCmdview"});
    EXPECT_NE(Category("Smt_id"), nullptr) << "a category stands even when empty";
}

TEST_F(ActionTreeTest, MapkeysStandReversedWithTheirKeysAndIconsGatherOverBuilds) {
    std::ofstream(m_root / "config.pro") << "mapkey $F2 @MAPKEY_LABELTwo;~ Command `A`;\n"
                                            "mapkey zz @MAPKEY_LABELZed;~ Command `B`;\n";
    Command("procmd1.res", "ProCmdViewRefit", "refit");
    std::ofstream(m_root / "text" / "resource" / "refit.png") << "png";
    Build({os::WidenUtf8((m_root / "config.pro").string())});
    EXPECT_EQ(Labels(Category("mapkeys_id")), (std::vector<std::string>{"Zed (zz)", "Two (F2)"}));
    ASSERT_EQ(m_images.size(), 1u);
    EXPECT_EQ(std::string(m_images[0].FileName()),
              (m_root / "text" / "resource" / "refit.png").string());
    EXPECT_EQ(std::string(m_images[0].Id()), "ProCmd ~ Command `ProCmdViewRefit`;");

    Build({os::WidenUtf8((m_root / "config.pro").string())});
    EXPECT_EQ(m_images.size(), 2u) << "a build adds to the icons a publish has not taken";
    int roots = 0;
    for (const CActionNode* n = m_tree.get(); n; n = n->Next()) ++roots;
    EXPECT_EQ(roots, 1);
}

TEST_F(ActionTreeTest, EveryLeafOfASharedPictureGetsItsOwnIcon) {
    // All mapkeys show the device software's one picture, and two commands here share one:
    // the picture is looked up once, but every leaf carries it under its own identifier.
    fs::create_directories(m_root / "Cfg" / "Images" / "STR_PROE");
    std::ofstream(m_root / "Cfg" / "Images" / "STR_PROE" / "Creo-Mapkey.png") << "png";
    std::ofstream(m_root / "config.pro") << "mapkey a @MAPKEY_LABELA;~ Command `A`;\n"
                                            "mapkey b @MAPKEY_LABELB;~ Command `B`;\n";
    Command("procmd1.res", "ProCmdViewRefit", "shared");
    Command("procmd2.res", "ProCmdViewSpin", "shared");
    std::ofstream(m_root / "text" / "resource" / "shared.gif") << "gif";
    Build({os::WidenUtf8((m_root / "config.pro").string())});
    std::multiset<std::string> files;
    std::set<std::string> ids;
    for (const auto& image : m_images) {
        files.insert(fs::path(image.FileName()).filename().string());
        ids.insert(image.Id());
    }
    EXPECT_EQ(files, (std::multiset<std::string>{"Creo-Mapkey.png", "Creo-Mapkey.png", "shared.gif",
                                                 "shared.gif"}));
    EXPECT_EQ(ids.size(), 4u);
}

}  // namespace
}  // namespace qvx::testing
