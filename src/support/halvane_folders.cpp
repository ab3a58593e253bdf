#include "support/halvane_folders.h"

#include <stdexcept>

namespace ovklib {

std::wstring GetHalvaneLocalAppDataFolder() {
    try {
        return GetHalvaneFolder(kLocalAppDataFolder);
    } catch (const std::runtime_error&) {
        throw std::runtime_error("Cannot get the halvane local appdata folder");
    }
}

}  // namespace ovklib
