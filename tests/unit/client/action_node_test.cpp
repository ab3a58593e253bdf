// Action nodes: the record's text pointers, the links between records, and deleting long
// chains without recursion.
#include "client/oxapp/action_node.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using oxapp::CActionNode;

TEST(ActionNode, ConstructedEmptyTextIsNullButSetEmptyTextPointsAtItsCharacters) {
    CActionNode blank;
    EXPECT_EQ(blank.Record()->size, sizeof(oxActionNodeEx_s));
    EXPECT_EQ(blank.Record()->type, 0u);
    EXPECT_EQ(blank.Record()->id, nullptr);

    CActionNode node("Fit", "", kOxAction);
    const oxActionNodeEx_s* record = node.Record();
    EXPECT_STREQ(record->id, "Fit");
    EXPECT_EQ(record->label, nullptr) << "an empty label given to the constructor";
    EXPECT_EQ(record->description, nullptr);
    EXPECT_EQ(node.Type(), 2u);

    node.SetLabel("");
    ASSERT_NE(record->label, nullptr);
    EXPECT_STREQ(record->label, "");
    node.SetDescription(nullptr);
    ASSERT_NE(record->description, nullptr) << "a null text counts as empty";
    node.SetId("Refit the view");
    EXPECT_EQ(record->id, node.Id().c_str());

    CActionNode full("View", "View", "Views of the model", kOxActionCategory);
    EXPECT_STREQ(full.Record()->description, "Views of the model");
}

TEST(ActionNode, LinksPointAtRecordsAndLeadBackToTheirNodes) {
    auto* root = new CActionNode("Part", "Part", kOxActionSet);
    auto* view = new CActionNode("View", "View", kOxActionCategory);
    auto* fit = new CActionNode("Fit", "Refit", kOxAction);
    auto* top = new CActionNode("Top", "Top", kOxAction);
    root->AppendChild(view);
    view->AppendChild(fit);
    view->AppendChild(top);

    EXPECT_EQ(root->Record()->children, view->Record());
    EXPECT_EQ(fit->Record()->next, top->Record());
    EXPECT_EQ(root->Children(), view);
    EXPECT_EQ(view->Children()->Next(), top);
    EXPECT_EQ(CActionNode::FromRecord(top->Record()), top);
    EXPECT_EQ(CActionNode::FromRecord(nullptr), nullptr);
    EXPECT_EQ(CActionNode::RecordOf(nullptr), nullptr);

    EXPECT_EQ(fit->DetachNext(), top);
    EXPECT_EQ(fit->Record()->next, nullptr);
    delete top;

    root->Clear();
    EXPECT_EQ(root->Record()->children, nullptr) << "the subtree is gone";
    EXPECT_EQ(root->Record()->id, nullptr);
    EXPECT_TRUE(root->Id().empty());
    delete root;
}

// A million links would overflow the stack many times over if deletion recursed.
constexpr int kLong = 1'000'000;

/// Hangs kLong nodes one behind the other through `link` and deletes the head.
template <typename Link>
void DeleteLongChain(std::uint32_t type, Link link) {
    auto* root = new CActionNode("Part", "Part", kOxActionSet);
    CActionNode* last = root;
    for (int i = 0; i < kLong; ++i) {
        auto* node = new CActionNode("a", "b", type);
        link(*last, node);
        last = node;
    }
    delete root;
}

TEST(ActionNode, MillionSiblingsAreDeletedInConstantStack) {
    DeleteLongChain(kOxAction, [](CActionNode& at, CActionNode* node) { at.SetNext(node); });
}

TEST(ActionNode, MillionDeepChainIsDeletedInConstantStack) {
    DeleteLongChain(kOxActionCategory,
                    [](CActionNode& at, CActionNode* node) { at.SetChildren(node); });
}

}  // namespace
