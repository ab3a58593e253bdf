// Deleting linked trees without recursion.
#include "client/ovk/tree.h"

#include <gtest/gtest.h>

#include <utility>

namespace ovk::testing {
namespace {

int g_deleted = 0;

class CNode : public CTree<CNode> {
public:
    ~CNode() override {
        DeleteLinked();
        ++g_deleted;
    }
    CNode* DetachNext() { return std::exchange(m_next, nullptr); }
    CNode* DetachChildren() { return std::exchange(m_children, nullptr); }

    CNode* m_next = nullptr;
    CNode* m_children = nullptr;
};

// A million links would overflow the stack many times over if deletion recursed.
constexpr int kLong = 1'000'000;

TEST(TreeTest, LongSiblingChainIsDeletedWithoutRecursion) {
    g_deleted = 0;
    auto* root = new CNode;
    CNode* last = root;
    for (int i = 0; i < kLong; ++i) last = last->m_next = new CNode;
    delete root;
    EXPECT_EQ(g_deleted, kLong + 1);
}

TEST(TreeTest, DeepChildChainIsDeletedWithoutRecursion) {
    g_deleted = 0;
    auto* root = new CNode;
    CNode* last = root;
    for (int i = 0; i < kLong; ++i) last = last->m_children = new CNode;
    delete root;
    EXPECT_EQ(g_deleted, kLong + 1);
}

TEST(TreeTest, MixedTreeDeletesEveryNodeOnce) {
    g_deleted = 0;
    auto* root = new CNode;
    root->m_children = new CNode;
    root->m_children->m_next = new CNode;
    root->m_children->m_next->m_children = new CNode;
    root->m_next = new CNode;
    delete root;
    EXPECT_EQ(g_deleted, 5);
}

}  // namespace
}  // namespace ovk::testing
