#include "catalogue/first_occurrences.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <unordered_map>

namespace {

// Every position of the text is tested against the keys' first `width` bytes (at most eight,
// packed into one word) through a bit filter; only at the rare positions that pass is each
// key length of that prefix group hashed and looked up exactly.
constexpr unsigned kFilterBits = 20;

std::uint64_t Pack(const char* p, std::size_t width) {
    std::uint64_t v = 0;
    std::memcpy(&v, p, width);
    return v;
}

std::size_t FilterSlot(std::uint64_t prefix) {
    return static_cast<std::size_t>((prefix * 0x9E3779B97F4A7C15ull) >> (64 - kFilterBits));
}

}  // namespace

std::vector<std::size_t> FindFirstOccurrences(std::string_view text,
                                              const std::vector<std::string>& keys) {
    constexpr std::size_t npos = std::string_view::npos;
    std::vector<std::size_t> result(keys.size(), npos);
    std::size_t width = 8;
    for (const std::string& key : keys) {
        if (!key.empty()) width = std::min(width, key.size());
    }
    // Distinct keys, each with the slots of `result` it answers.
    std::unordered_map<std::string_view, std::vector<std::size_t>> exact;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i].empty()) {
            result[i] = 0;
        } else if (keys[i].size() <= text.size()) {
            exact[keys[i]].push_back(i);
        }
    }
    std::size_t remaining = exact.size();
    if (remaining == 0) return result;
    std::unordered_map<std::uint64_t, std::vector<std::size_t>> lengthsByPrefix;
    std::vector<bool> filter(std::size_t{1} << kFilterBits);
    for (const auto& [key, slots] : exact) {
        std::uint64_t prefix = Pack(key.data(), width);
        filter[FilterSlot(prefix)] = true;
        auto& lengths = lengthsByPrefix[prefix];
        if (std::find(lengths.begin(), lengths.end(), key.size()) == lengths.end())
            lengths.push_back(key.size());
    }
    for (std::size_t pos = 0; pos + width <= text.size() && remaining > 0; ++pos) {
        std::uint64_t prefix = Pack(text.data() + pos, width);
        if (!filter[FilterSlot(prefix)]) continue;
        auto group = lengthsByPrefix.find(prefix);
        if (group == lengthsByPrefix.end()) continue;
        for (std::size_t length : group->second) {
            if (pos + length > text.size()) continue;
            auto hit = exact.find(text.substr(pos, length));
            if (hit == exact.end() || result[hit->second.front()] != npos) continue;
            for (std::size_t slot : hit->second) result[slot] = pos;
            --remaining;
        }
    }
    return result;
}
