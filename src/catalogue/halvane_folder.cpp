#include "catalogue/halvane_folder.h"

#include "support/registry.h"

#include <stdexcept>

namespace ovklib {
namespace {
std::optional<std::wstring> g_override;
/// Room for the folder, in characters with the terminator.
constexpr std::size_t kFolderCapacity = 260;
}  // namespace

std::wstring GetHalvaneInstallFolder() {
    if (g_override) return *g_override;
    auto folder = qvx::os::ReadRegistryString(qvx::os::RegistryRoot::LocalMachine,
                                              L"SOFTWARE\\Quorvex\\Halvane", L"Home Directory",
                                              kFolderCapacity);
    if (!folder) throw std::runtime_error("Cannot get the halvane installation folder");
    return *folder;
}

void SetHalvaneInstallFolderOverride(std::optional<std::wstring> folder) {
    g_override = std::move(folder);
}

}  // namespace ovklib
