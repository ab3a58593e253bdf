// Base of the nodes of a linked tree, in which each node links to its next sibling and to its
// first child. T provides
//     T* Next() const;           // the next sibling or null
//     void SetNext(T* node);     // links `node` as the next sibling of a node that has none
//     T* DetachNext();           // the next sibling or null; the link is cleared
//     T* DetachChildren();       // the first child or null; the link is cleared
// and calls DeleteLinked() from its destructor.
#pragma once

namespace ovk {

template <typename T>
class CTree {
public:
    virtual ~CTree() = default;

protected:
    /// Deletes every node reachable from this one through its links, without recursion, so a
    /// long chain of siblings or a deep chain of children cannot run out of stack, and without
    /// allocating, so that it cannot fail in a destructor when memory runs out. The nodes still
    /// to delete form one chain through their sibling links: a node's children are spliced in
    /// before it, and a node is deleted once it has no links left, so each delete is flat.
    /// Every node is visited a bounded number of times. Call it from T's destructor, while T
    /// is still whole.
    void DeleteLinked() noexcept {
        T& self = static_cast<T&>(*this);
        T* chain = self.DetachChildren();
        if (T* next = self.DetachNext()) {
            if (chain) {
                LastOf(chain)->SetNext(next);
            } else {
                chain = next;
            }
        }
        while (chain) {
            if (T* children = chain->DetachChildren()) {
                LastOf(children)->SetNext(chain);
                chain = children;
            } else {
                T* node = chain;
                chain = node->DetachNext();
                delete node;
            }
        }
    }

private:
    static T* LastOf(T* node) {
        while (T* after = node->Next()) node = after;
        return node;
    }
};

}  // namespace ovk
