// The seam between actions and the catalogue's merged mapkeys: a kProMacro action asks here for
// the mapkeys, and the catalogue registers the function that answers. Until one is registered
// the list is empty, so every kProMacro action runs its own text.
#pragma once

#include "catalogue/action.h"

#include <functional>

namespace qvx::catalogue {

using MapkeyProvider = std::function<bool(std::vector<CMapkeyEntry>& out)>;

/// Replaces the provider; an empty function removes it.
void SetMapkeyProvider(MapkeyProvider provider);

/// Appends the merged mapkeys in key order; true when there were any.
bool GetMergedMapkeys(std::vector<CMapkeyEntry>& out);

}  // namespace qvx::catalogue
