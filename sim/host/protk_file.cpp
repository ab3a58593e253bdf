#include "sim/host/protk_file.h"

#include <algorithm>
#include <cctype>

namespace sim {
namespace {

std::string Trim(const std::string& s) {
    std::size_t b = s.find_first_not_of(" \t\r");
    if (b == std::string::npos) return {};
    return s.substr(b, s.find_last_not_of(" \t\r") - b + 1);
}

std::string Lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}

}  // namespace

std::vector<CProtkBlock> ParseProtk(const std::string& text) {
    std::vector<CProtkBlock> blocks;
    CProtkBlock current;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        std::string line = Trim(text.substr(start, end - start));
        start = end + 1;
        if (line.empty() || line[0] == '!' || line[0] == '#') continue;
        std::size_t gap = line.find_first_of(" \t");
        std::string keyword = Lower(line.substr(0, gap));
        if (keyword == "end") {
            if (!current.empty()) blocks.push_back(std::move(current));
            current.clear();
            continue;
        }
        if (gap == std::string::npos) continue;
        current[keyword] = Trim(line.substr(gap));
    }
    if (!current.empty()) blocks.push_back(std::move(current));
    return blocks;
}

std::optional<std::string> ProtkValue(const std::vector<CProtkBlock>& blocks,
                                      const std::string& name, const std::string& keyword) {
    for (const CProtkBlock& block : blocks) {
        auto named = block.find("name");
        if (!name.empty() && (named == block.end() || named->second != name)) continue;
        auto found = block.find(keyword);
        return found == block.end() ? std::nullopt : std::optional(found->second);
    }
    return std::nullopt;
}

}  // namespace sim
