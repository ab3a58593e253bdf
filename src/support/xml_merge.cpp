#include "support/xml_merge.h"

namespace ovklib {
namespace {

using boost::property_tree::ptree;
using Path = ptree::path_type;

void MergeNode(ptree& target, const ptree& node, const std::string& path, const std::string& key);

void WalkChildren(ptree& target, const ptree& node, const std::string& path,
                  const std::string& key) {
    for (const auto& [name, child] : node) MergeNode(target, child, path + "/" + name, key);
}

void MergeNode(ptree& target, const ptree& node, const std::string& path, const std::string& key) {
    // The root's path is empty; every other path starts with the '/' that joined it.
    const std::string inner = path.empty() ? path : path.substr(1);
    if (node.empty()) {
        if (!inner.empty()) target.put_child(Path(inner, '/'), node);
        return;
    }
    if (inner.empty()) return WalkChildren(target, node, path, key);
    if (!target.get_child_optional(Path(inner, '/'))) {
        target.add_child(Path(inner, '/'), node);
        return;
    }
    if (key.empty()) return WalkChildren(target, node, path, key);
    auto value = node.get_optional<std::string>(Path("<xmlattr>/" + key, '/'));
    if (!value) return WalkChildren(target, node, path, key);
    std::size_t slash = inner.find_last_of('/');
    ptree* parent = &target;
    if (slash != std::string::npos && slash != 0) {
        auto found = target.get_child_optional(Path(inner.substr(0, slash), '/'));
        if (!found) return WalkChildren(target, node, path, key);
        parent = &*found;
    }
    const std::string leaf = slash == std::string::npos ? inner : inner.substr(slash + 1);
    for (auto& [name, child] : *parent) {
        if (name != leaf) continue;
        auto other = child.get_optional<std::string>(Path("<xmlattr>/" + key, '/'));
        if (other && *other == *value) {
            MergeNode(child, node, std::string(), key);
            return;
        }
    }
    parent->push_back({leaf, node});
}

}  // namespace

void MergePropertyTree(ptree& target, const ptree& source, const std::string& keyAttribute) {
    MergeNode(target, source, std::string(), keyAttribute);
}

}  // namespace ovklib
