#include "catalogue/folder_listing.h"

#include "support/os.h"

namespace qvx::catalogue {
namespace {

/// The name with ASCII letters upper-cased; false when it holds something a listing cannot
/// settle.
bool Fold(const std::wstring& name, std::wstring& out) {
    out.resize(name.size());
    for (std::size_t i = 0; i < name.size(); ++i) {
        wchar_t c = name[i];
        if (c >= 0x80 || c == L'/' || c == L'\\') return false;
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
    std::wstring folded;
    if (!Fold(leaf, folded)) return true;
    return listed->second.count(folded) != 0;
}

}  // namespace qvx::catalogue
