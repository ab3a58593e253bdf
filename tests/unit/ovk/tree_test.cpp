// Deleting linked trees without recursion.
#include "client/ovk/tree.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <new>
#include <utility>

namespace {
std::uint64_t g_allocations = 0;
}  // namespace

// Counts this test program's allocations.
void* operator new(std::size_t size) {
    ++g_allocations;
    if (void* block = std::malloc(size ? size : 1)) return block;
    throw std::bad_alloc();
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }

namespace ovk::testing {
namespace {

int g_deleted = 0;

class CNode : public CTree<CNode> {
public:
    ~CNode() override {
        DeleteLinked();
        ++g_deleted;
    }
    CNode* Next() const { return m_next; }
    void SetNext(CNode* node) { m_next = node; }
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

// Deletion runs in destructors, where an allocation that fails would end the process.
TEST(TreeTest, DeletingAWideAndDeepTreeAllocatesNothing) {
    g_deleted = 0;
    auto* root = new CNode;
    int made = 1;
    // Ten levels, each node's first child carrying nine siblings.
    CNode* parent = root;
    for (int level = 0; level < 10; ++level) {
        CNode* first = parent->m_children = new CNode;
        CNode* last = first;
        for (int i = 0; i < 9; ++i) last = last->m_next = new CNode;
        made += 10;
        for (CNode* n = first; n != last; n = n->m_next) {
            n->m_children = new CNode;
            ++made;
        }
        parent = last;
    }
    std::uint64_t before = g_allocations;
    delete root;
    EXPECT_EQ(g_allocations, before);
    EXPECT_EQ(g_deleted, made);
}

}  // namespace
}  // namespace ovk::testing
