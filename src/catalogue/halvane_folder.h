// The installation folder of the device software, where the shared pictures of actions live.
#pragma once

#include <optional>
#include <string>

namespace ovklib {

/// HKLM "SOFTWARE\Quorvex\Halvane" "Home Directory" (260 characters). Throws
/// std::runtime_error "Cannot get the halvane installation folder" when it cannot be read.
std::wstring GetHalvaneInstallFolder();

/// Makes GetHalvaneInstallFolder() give `folder` without asking the registry (empty optional:
/// ask again). For tools that run without the device software installed.
void SetHalvaneInstallFolderOverride(std::optional<std::wstring> folder);

}  // namespace ovklib
