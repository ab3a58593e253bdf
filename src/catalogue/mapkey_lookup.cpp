#include "catalogue/mapkey_lookup.h"

namespace qvx::catalogue {
namespace {

MapkeyProvider& Provider() {
    static MapkeyProvider provider;
    return provider;
}

}  // namespace

void SetMapkeyProvider(MapkeyProvider provider) { Provider() = std::move(provider); }

bool GetMergedMapkeys(std::vector<CMapkeyEntry>& out) {
    return Provider() ? Provider()(out) : false;
}

}  // namespace qvx::catalogue
