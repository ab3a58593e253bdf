#include "catalogue/folder_listing.h"

#include "support/os.h"

#include <string_view>

namespace qvx::catalogue {
namespace {

/// The name with ASCII letters upper-cased; false when it holds a character outside ASCII,
/// which a listing cannot settle.
bool Fold(std::wstring_view name, std::wstring& out) {
    out.resize(name.size());
    for (std::size_t i = 0; i < name.size(); ++i) {
        wchar_t c = name[i];
        if (c >= 0x80) return false;
        out[i] = (c >= L'a' && c <= L'z') ? static_cast<wchar_t>(c - L'a' + L'A') : c;
    }
    return true;
}

}  // namespace

CFolderListing::CFolderListing(const std::vector<std::wstring>& folders) {
    for (const std::wstring& folder : folders) {
        auto& names = m_names[folder];
        std::wstring folded;
        for (const std::wstring& name : os::FindFiles(folder, L"*")) {
            // A name outside ASCII is kept as it stands; its look-ups are never filtered.
            names.insert(Fold(name, folded) ? folded : name);
        }
    }
}

bool CFolderListing::MayHold(const std::wstring& folder, const std::wstring& leaf) const {
    auto listed = m_names.find(folder);
    if (listed == m_names.end()) return true;
    // A path below the folder can only exist when its first part does.
    std::wstring_view first(leaf);
    first = first.substr(0, first.find_first_of(L"/\\"));
    std::wstring folded;
    if (first.empty() || !Fold(first, folded)) return true;
    return listed->second.count(folded) != 0;
}

}  // namespace qvx::catalogue
