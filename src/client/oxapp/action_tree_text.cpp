#include "client/oxapp/action_tree_text.h"

#include <utility>
#include <vector>

namespace oxapp {

namespace {

void AppendField(std::string& out, const char* text) {
    if (text) out += EscapeActionField(text);
}

}  // namespace

std::string EscapeActionField(std::string_view text) {
    static constexpr char kHex[] = "0123456789abcdef";
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        auto byte = static_cast<unsigned char>(c);
        switch (byte) {
            case '\\':
                out += "\\\\";
                break;
            case '\t':
                out += "\\t";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            default:
                if (byte < 0x20 || byte == 0x7F) {
                    out += "\\x";
                    out += kHex[byte >> 4];
                    out += kHex[byte & 0xF];
                } else {
                    out += c;
                }
        }
    }
    return out;
}

std::optional<std::size_t> AppendActionNodeLines(const oxActionNodeEx_s* root, std::string& out,
                                                 std::size_t maxNodes) {
    std::string lines;
    std::size_t count = 0;
    std::vector<std::pair<const oxActionNodeEx_s*, std::size_t>> pending;
    if (root) pending.push_back({root, 0});
    while (!pending.empty()) {
        auto [node, depth] = pending.back();
        pending.pop_back();
        if (++count > maxNodes) return std::nullopt;
        lines += "node\t" + std::to_string(depth) + '\t' + std::to_string(node->type) + '\t';
        AppendField(lines, node->id);
        lines += '\t';
        AppendField(lines, node->label);
        lines += '\t';
        AppendField(lines, node->description);
        lines += '\n';
        // The sibling goes below the children on the stack, so the whole subtree comes first.
        if (node->next) pending.push_back({node->next, depth});
        if (node->children) pending.push_back({node->children, depth + 1});
    }
    out += lines;
    return count;
}

void AppendActionImageLines(const oxImage_t* images, std::size_t count, std::string& out) {
    for (std::size_t i = 0; i < count; ++i) {
        const oxImage_t& image = images[i];
        out += "image\t";
        AppendField(out, image.id);
        out += '\t';
        if (image.type == kOxImageFile) AppendField(out, image.file.fileName);
        if (image.type == kOxImageResource) AppendField(out, image.resource.fileName);
        out += '\n';
    }
}

std::string ActionTreeText(const oxActionNodeEx_s* root, const oxImage_t* images,
                           std::size_t count) {
    std::string text;
    if (!AppendActionNodeLines(root, text)) return {};
    AppendActionImageLines(images, count, text);
    return text;
}

}  // namespace oxapp
