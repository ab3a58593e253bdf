// The action tree of the sample host installation, built as the plug-in builds it and sent
// through the device to the simulated driver: the driver holds it line for line.
#include "client_fixture.h"

#include "catalogue/halvane_folder.h"
#include "catalogue/pro_commands.h"
#include "client/oxapp/action_tree_text.h"
#include "client/oxapp/device_interfaces.h"
#include "core/action_tree.h"
#include "sim/host/session.h"
#include "support/os.h"
#include "toolkit/host_table.h"

#include <algorithm>

namespace qvx::testing {
namespace {

/// The repository's sample installation, reached through Wine's drive Z:.
std::wstring SampleInstallation() {
    std::string file = __FILE__;
    std::string root = file.substr(0, file.rfind("/tests/"));
    std::string path = "Z:" + root + "/sim/host/install";
    std::replace(path.begin(), path.end(), '/', '\\');
    return os::WidenUtf8(path);
}

TEST_F(ClientTest, TreeOfTheSampleInstallationReachesTheDriverLineForLine) {
    auto& driver = Hold(L"full");
    auto& device = Open(kPluginFlags);
    ASSERT_NE(device.Connection(), 0u);
    const std::wstring install = SampleInstallation();
    os::SetEnv(L"PRO_DIRECTORY", install);
    os::SetEnv(L"LANG", std::wstring(L"C"));
    ovklib::SetHalvaneInstallFolderOverride(install);
    sim::CSession::Instance().Reset();
    toolkit::InstallHostTable(sim::CSession::Instance().Args());

    CProECommands catalogue;
    catalogue.SetMapkeyFiles({os::JoinPath(os::JoinPath(install, L"text"), L"config.pro")});
    std::unique_ptr<oxapp::CActionNode> root;
    std::vector<oxapp::COxImage> images;
    core::BuildActionTree(catalogue, root, images);
    ASSERT_TRUE(root);
    ASSERT_FALSE(images.empty());
    auto records = oxapp::ImageRecords(images);
    const std::string expected =
        oxapp::ActionTreeText(root->Record(), records.data(), records.size());

    auto* cfg = ovk::interface_cast<oxapp::IAppcfg>(m_object).get();
    ASSERT_NE(cfg, nullptr);
    EXPECT_TRUE(cfg->WriteActionImages(records.data(), records.size()));
    EXPECT_TRUE(cfg->WriteActions(root->Record()));
    std::string held = driver.Record("actions");
    EXPECT_EQ(held, expected);
    EXPECT_EQ(held.rfind("node\t0\t0\tDefault\tNo Part\t\nnode\t1\t1\tMarkup_id\tMarkup\t\n", 0),
              0u);
    EXPECT_NE(held.find("\nnode\t2\t2\tProMacro $F5\tSave (F5)\tSave\n"), std::string::npos);
    EXPECT_NE(held.find("\tProCmd ~ Command `ProCmdViewRefit`;\tEinpassen\t"), std::string::npos);

    toolkit::InstallHostTable(nullptr);
    ovklib::SetHalvaneInstallFolderOverride(std::nullopt);
    os::SetEnv(L"PRO_DIRECTORY", std::nullopt);
}

}  // namespace
}  // namespace qvx::testing
