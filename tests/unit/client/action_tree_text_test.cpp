// The text form of a published tree and its images.
#include "client/oxapp/action_tree_text.h"

#include "client/oxapp/action_node.h"
#include "client/oxapp/ox_image.h"

#include <gtest/gtest.h>

namespace {

using oxapp::CActionNode;

TEST(ActionTreeText, NodesInPreOrderThenImagesInListOrder) {
    CActionNode root("Part", "Part", kOxActionSet);
    auto* view = new CActionNode("View", "View", "Standard views", kOxActionCategory);
    view->AppendChild(new CActionNode("Fit", "Refit", kOxAction));
    view->AppendChild(new CActionNode("Top", "", kOxAction));
    root.AppendChild(view);
    root.AppendChild(new CActionNode("Macro", "Mapkey", kOxActionCategory));

    std::vector<oxapp::COxImage> images(2);
    images[0].SetId("Top");
    images[0].SetFile("C:\\icons\\top.png", 0);
    images[1].SetId("Fit");
    const std::uint8_t bytes[] = {1};
    images[1].SetData(bytes, 1);
    auto records = oxapp::ImageRecords(images);

    EXPECT_EQ(oxapp::ActionTreeText(root.Record(), records.data(), records.size()),
              "node\t0\t0\tPart\tPart\t\n"
              "node\t1\t1\tView\tView\tStandard views\n"
              "node\t2\t2\tFit\tRefit\t\n"
              "node\t2\t2\tTop\t\t\n"
              "node\t1\t1\tMacro\tMapkey\t\n"
              "image\tTop\tC:\\\\icons\\\\top.png\n"
              "image\tFit\t\n");
}

TEST(ActionTreeText, FieldsEscapeSeparatorsAndControlBytesOnly) {
    EXPECT_EQ(oxapp::EscapeActionField("a\\b\tc\nd\re"), "a\\\\b\\tc\\nd\\re");
    EXPECT_EQ(oxapp::EscapeActionField(std::string("\x01\x1f\x7f", 3)), "\\x01\\x1f\\x7f");
    EXPECT_EQ(oxapp::EscapeActionField(std::string("\0", 1)), "\\x00");
    EXPECT_EQ(oxapp::EscapeActionField("Ansicht \xc3\xbc ~ \x80"), "Ansicht \xc3\xbc ~ \x80")
        << "bytes from 0x80 up pass unchanged";
}

TEST(ActionTreeText, ACycleInTheLinksGivesNoLines) {
    oxActionNodeEx_s a{sizeof a, kOxActionCategory, nullptr, nullptr, "a", nullptr, nullptr};
    oxActionNodeEx_s b{sizeof b, kOxAction, &a, nullptr, "b", nullptr, nullptr};
    a.children = &b;
    std::string out = "kept\n";
    EXPECT_FALSE(oxapp::AppendActionNodeLines(&a, out, /*maxNodes=*/100));
    EXPECT_EQ(out, "kept\n");
    EXPECT_EQ(oxapp::AppendActionNodeLines(nullptr, out), 0u);
}

}  // namespace
