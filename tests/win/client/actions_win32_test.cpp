// Publishing the action tree and its images through the device's IAppcfg to the simulated
// driver, and reading a resource image out of a module.
#include "client_fixture.h"

#include "client/oxapp/action_node.h"
#include "client/oxapp/device_interfaces.h"
#include "client/oxapp/ox_image.h"

#include <memory>

namespace qvx::testing {
namespace {

using oxapp::CActionNode;
using oxapp::COxImage;

class ActionsTest : public ClientTest {
protected:
    /// A set with one category of two actions; texts that need escaping on the way.
    static std::unique_ptr<CActionNode> Tree() {
        auto root = std::make_unique<CActionNode>();
        auto* view = new CActionNode("View", "View", "Standard\tviews", kOxActionCategory);
        view->AppendChild(new CActionNode("Fit", "Refit", kOxAction));
        view->AppendChild(new CActionNode("Top", "Top\nview", "", kOxAction));
        root->AppendChild(view);
        return root;
    }
    static std::vector<COxImage> Images() {
        std::vector<COxImage> images(3);
        images[0].SetId("Top");
        images[0].SetFile("C:\\icons\\top.png", 0);
        images[1].SetId("Fit");
        images[1].SetResource("icons.dll", OxMakeIntResource(7), nullptr);
        const std::uint8_t bytes[] = {0x89, 'P', 'N', 'G'};
        images[2].SetId("View");
        images[2].SetData(bytes, sizeof bytes);
        return images;
    }
    /// The device's IAppcfg; the device keeps it alive.
    oxapp::IAppcfg& Cfg() {
        oxapp::IAppcfg* cfg = ovk::interface_cast<oxapp::IAppcfg>(m_object).get();
        if (!cfg) throw std::runtime_error("the device offers no IAppcfg");
        return *cfg;
    }
};

TEST_F(ActionsTest, PublishedTreeImagesAndActiveSetReachTheDriverAsSent) {
    auto& driver = Hold(L"full");
    auto& device = Open(kPluginFlags);
    ASSERT_NE(device.Connection(), 0u);
    auto tree = Tree();
    std::vector<COxImage> images = Images();

    // The order the plug-in publishes in: images (whose list then goes), texts of the root,
    // the tree, the set.
    auto records = oxapp::ImageRecords(images);
    EXPECT_TRUE(Cfg().WriteActionImages(records.data(), records.size()));
    records.clear();
    images.clear();
    tree->SetId("Part");
    tree->SetLabel("Part");
    EXPECT_TRUE(Cfg().WriteActions(tree->Record()));
    EXPECT_TRUE(Cfg().ActivateActionSet("Part"));

    EXPECT_EQ(driver.Record("actions"),
              "node\t0\t0\tPart\tPart\t\n"
              "node\t1\t1\tView\tView\tStandard\\tviews\n"
              "node\t2\t2\tFit\tRefit\t\n"
              "node\t2\t2\tTop\tTop\\nview\t\n"
              "image\tTop\tC:\\\\icons\\\\top.png\n"
              "image\tFit\ticons.dll\n"
              "image\tView\t\n");
    EXPECT_EQ(driver.Record("active-action-set"), "Part");
    EXPECT_NE(driver.Log().find("OxAppCmdWriteActions handle=1 root=\"Part\" nodes=4"),
              std::string::npos)
        << driver.Log();
}

TEST_F(ActionsTest, PublishingFailsWhenTheDriverRefusesOrIsNotConnected) {
    auto& driver = Hold(L"full");
    auto& device = Open(kPluginFlags);
    ASSERT_NE(device.Connection(), 0u);
    auto tree = Tree();

    driver.SimDriverRefuseNext("OxAppCmdWriteActions", kOxNotEnoughMemory);
    EXPECT_FALSE(Cfg().WriteActions(tree->Record()));
    driver.SimDriverRefuseNext("OxAppCmdActivateActionSet", kOxNotEnoughMemory);
    EXPECT_FALSE(Cfg().ActivateActionSet("Part"));
    driver.SimDriverRefuseNext("OxAppCmdWriteActionImages", kOxNotEnoughMemory);
    EXPECT_FALSE(Cfg().WriteActionImages(nullptr, 0));

    device.Close();
    driver.SimDriverClearLog();
    EXPECT_FALSE(Cfg().WriteActions(tree->Record()));
    EXPECT_FALSE(Cfg().ActivateActionSet("Part"));
    EXPECT_FALSE(Cfg().WriteActionImages(nullptr, 0));
    EXPECT_EQ(driver.Log(), "") << "no call is made without a connection";
}

TEST_F(ActionsTest, ADriverWithoutTheActionFunctionsIsRefusedQuietly) {
    Hold(L"no-optional");
    auto& device = Open(kPluginFlags);
    ASSERT_NE(device.Connection(), 0u);
    auto tree = Tree();
    EXPECT_FALSE(Cfg().WriteActions(tree->Record()));
    EXPECT_FALSE(Cfg().ActivateActionSet("Part"));
    EXPECT_FALSE(Cfg().WriteActionImages(nullptr, 0));
}

/// The plug-in, built beside the test programs' folder, carries the LCD's logo as bitmap 298,
/// the only resource of that id.
std::string PluginPath() {
    char exe[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, exe, MAX_PATH);
    std::string folder(exe);
    folder.resize(folder.find_last_of('\\') + 1);
    return folder + "..\\qvxproengineer.dll";
}

TEST(OxImageLoad, ResourceBecomesACopyOfItsBytes) {
    COxImage image;
    image.SetId("About");
    image.SetIndex(5);
    image.SetResource(PluginPath().c_str(), OxMakeIntResource(298), nullptr);
    ASSERT_TRUE(image.Load()) << PluginPath();
    EXPECT_EQ(image.Type(), 3u);
    EXPECT_EQ(image.Index(), 5u);
    // A bitmap resource: its header (size 40, 22 by 22, 32 bits), then the pixels.
    ASSERT_EQ(image.DataSize(), 40u + 22 * 22 * 4);
    std::int32_t header[3] = {};
    std::memcpy(header, image.Data(), sizeof header);
    EXPECT_EQ(header[0], 40);
    EXPECT_EQ(header[1], 22);
    EXPECT_EQ(header[2], 22);
}

TEST(OxImageLoad, MissingModuleOrResourceLeavesTheImageAsItWas) {
    COxImage image;
    image.SetResource("no-such-module.dll", "ICON", nullptr);
    EXPECT_FALSE(image.Load());
    EXPECT_EQ(image.Type(), 2u);

    image.SetResource(PluginPath().c_str(), "NO_SUCH_RESOURCE", nullptr);
    EXPECT_FALSE(image.Load()) << "no type holds the id";
    EXPECT_STREQ(image.ResourceId(), "NO_SUCH_RESOURCE");

    image.SetFile("fit.png", 0);
    EXPECT_FALSE(image.Load()) << "only a resource can be loaded";
}

}  // namespace
}  // namespace qvx::testing
