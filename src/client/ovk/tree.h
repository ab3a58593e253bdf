// Base of the nodes of a linked tree, in which each node links to its next sibling and to its
// first child. T provides
//     T* DetachNext();      // the next sibling or null; the link is cleared
//     T* DetachChildren();  // the first child or null; the link is cleared
// and calls DeleteLinked() from its destructor.
#pragma once

#include <cstddef>
#include <vector>

namespace ovk {

template <typename T>
class CTree {
public:
    virtual ~CTree() = default;

protected:
    /// Deletes every node reachable from this one through its links, without recursion, so a
    /// long chain of siblings or a deep chain of children cannot run out of stack. The nodes
    /// are gathered breadth first and unlinked as they go, so each delete is flat. Call it
    /// from T's destructor, while T is still whole.
    void DeleteLinked() {
        T& self = static_cast<T&>(*this);
        T* next = self.DetachNext();
        T* children = self.DetachChildren();
        if (!next && !children) return;
        std::vector<T*> nodes;
        if (next) nodes.push_back(next);
        if (children) nodes.push_back(children);
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (T* after = nodes[i]->DetachNext()) nodes.push_back(after);
            if (T* below = nodes[i]->DetachChildren()) nodes.push_back(below);
        }
        for (std::size_t i = nodes.size(); i-- > 0;) delete nodes[i];
    }
};

}  // namespace ovk
