// CActionNode: one node of the action tree that is published to the driver. The node owns its
// three texts and the record that points at them, and, through the record's links, its next
// sibling and its first child with all that hangs on them.
#pragma once

#include "client/oxapp/action_records.h"
#include "client/ovk/tree.h"

#include <cstdint>
#include <string>

namespace oxapp {

/// The record comes first, after the virtual table pointer, and is what the driver reads: the
/// links of one node's record point at the records of other nodes. A text pointer of the
/// record is null only while its text has never been set, by a constructor that got an empty
/// text; once set, even to an empty text, it points at the text's characters.
///
/// Nodes live on the heap and are neither copied nor moved, since records point at them.
/// Deleting a node deletes its siblings after it and its whole subtree, without recursion.
class CActionNode : public ovk::CTree<CActionNode> {
public:
    /// An action set with no texts and no links.
    CActionNode();
    /// Null texts count as empty.
    CActionNode(const char* id, const char* label, std::uint32_t type);
    CActionNode(const char* id, const char* label, const char* description, std::uint32_t type);
    CActionNode(const CActionNode&) = delete;
    CActionNode& operator=(const CActionNode&) = delete;
    ~CActionNode() override;

    /// A null text counts as empty; the record then points at the empty text.
    void SetId(const char* text);
    void SetLabel(const char* text);
    void SetDescription(const char* text);
    void SetType(std::uint32_t type) { m_node.type = type; }
    std::uint32_t Type() const { return m_node.type; }
    const std::string& Id() const { return m_id; }
    const std::string& Label() const { return m_label; }
    const std::string& Description() const { return m_description; }

    /// The node behind a link, or null.
    CActionNode* Next() const { return FromRecord(m_node.next); }
    CActionNode* Children() const { return FromRecord(m_node.children); }
    /// The same, and the link is cleared: the caller owns the node from then on.
    CActionNode* DetachNext();
    CActionNode* DetachChildren();
    /// Takes ownership of `node` (may be null) as the next sibling or the first child. A node
    /// that was linked there before is deleted, with everything that hangs on it.
    void SetNext(CActionNode* node);
    void SetChildren(CActionNode* node);
    /// Takes ownership of `node` as the last of this node's children.
    void AppendChild(CActionNode* node);

    /// The record handed to the driver.
    const oxActionNodeEx_s* Record() const { return &m_node; }
    /// The record of `node`, or null for a null node.
    static const oxActionNodeEx_s* RecordOf(const CActionNode* node) {
        return node ? node->Record() : nullptr;
    }
    /// The node whose record `record` is, or null for a null record. The record must belong
    /// to a CActionNode.
    static CActionNode* FromRecord(const oxActionNodeEx_s* record);

    /// Back to a node without texts: the three pointers and strings are cleared, and the
    /// subtree and the siblings after this node are deleted.
    void Clear();

private:
    oxActionNodeEx_s m_node{};
    std::string m_id;
    std::string m_label;
    std::string m_description;
};

}  // namespace oxapp
