#include "client/oxapp/action_node.h"

#include <utility>

namespace oxapp {

namespace {

/// Where the record sits in a node: right behind the virtual table pointer. Links carry
/// records, so a node is found from a link by stepping back over that pointer.
constexpr std::ptrdiff_t kRecordOffset = sizeof(void*);

const char* Text(const char* text) { return text ? text : ""; }

/// Stores `text` and points `pointer` at it.
void Store(std::string& store, const char*& pointer, const char* text) {
    store = Text(text);
    pointer = store.c_str();
}

/// As Store, but an empty text leaves the pointer null.
void StoreInitial(std::string& store, const char*& pointer, const char* text) {
    store = Text(text);
    pointer = store.empty() ? nullptr : store.c_str();
}

}  // namespace

CActionNode::CActionNode() { m_node.size = sizeof(oxActionNodeEx_s); }

CActionNode::CActionNode(const char* id, const char* label, std::uint32_t type)
    : CActionNode(id, label, nullptr, type) {}

CActionNode::CActionNode(const char* id, const char* label, const char* description,
                         std::uint32_t type)
    : CActionNode() {
    m_node.type = type;
    StoreInitial(m_id, m_node.id, id);
    StoreInitial(m_label, m_node.label, label);
    StoreInitial(m_description, m_node.description, description);
}

CActionNode::~CActionNode() { DeleteLinked(); }

void CActionNode::SetId(const char* text) { Store(m_id, m_node.id, text); }
void CActionNode::SetLabel(const char* text) { Store(m_label, m_node.label, text); }
void CActionNode::SetDescription(const char* text) {
    Store(m_description, m_node.description, text);
}

CActionNode* CActionNode::FromRecord(const oxActionNodeEx_s* record) {
    if (!record) return nullptr;
    auto* bytes = reinterpret_cast<const char*>(record) - kRecordOffset;
    return const_cast<CActionNode*>(reinterpret_cast<const CActionNode*>(bytes));
}

CActionNode* CActionNode::DetachNext() { return FromRecord(std::exchange(m_node.next, nullptr)); }

CActionNode* CActionNode::DetachChildren() {
    return FromRecord(std::exchange(m_node.children, nullptr));
}

void CActionNode::SetNext(CActionNode* node) {
    delete DetachNext();
    m_node.next = node ? &node->m_node : nullptr;
}

void CActionNode::SetChildren(CActionNode* node) {
    delete DetachChildren();
    m_node.children = node ? &node->m_node : nullptr;
}

void CActionNode::AppendChild(CActionNode* node) {
    if (!node) return;
    CActionNode* last = Children();
    if (!last) {
        m_node.children = &node->m_node;
        return;
    }
    while (CActionNode* after = last->Next()) last = after;
    last->m_node.next = &node->m_node;
}

void CActionNode::Clear() {
    m_node.id = m_node.label = m_node.description = nullptr;
    m_id.clear();
    m_label.clear();
    m_description.clear();
    DeleteLinked();
}

}  // namespace oxapp
