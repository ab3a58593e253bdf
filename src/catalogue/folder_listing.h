// What a few folders held when they were listed, as a filter in front of file look-ups: a name
// the listing lacks is not there (no file system call needed), a name it has is then checked
// for real. Searching thousands of missing names in one large folder costs one listing
// instead of a look-up each, which matters where every miss scans the folder (case-blind file
// systems emulated over case-sensitive ones).
#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace qvx::catalogue {

class CFolderListing {
public:
    /// Lists each of `folders`; a folder that cannot be listed counts as empty.
    explicit CFolderListing(const std::vector<std::wstring>& folders);

    /// False only when `folder` was listed and held no entry named `leaf` (case ignored for
    /// ASCII letters); for a leaf with path separators, no entry named as its first part. A
    /// name outside ASCII, a leaf that starts with a separator, or a folder that was not
    /// listed gives true: only a real look-up can tell.
    bool MayHold(const std::wstring& folder, const std::wstring& leaf) const;

private:
    std::unordered_map<std::wstring, std::unordered_set<std::wstring>> m_names;
};

}  // namespace qvx::catalogue
