// The device software's per-user folders, made when missing.
#pragma once

#include <optional>
#include <string>

namespace ovklib {

/// The shell's folder id of the per-user local application data.
inline constexpr int kLocalAppDataFolder = 28;

/// The shell folder `csidl` with the sub-folder "Quorvex\Halvane", created when missing.
/// Throws std::runtime_error "Cannot get the halvane folder path".
std::wstring GetHalvaneFolder(int csidl);
/// The roaming application data folder's "Quorvex", created when missing: the plug-in's own
/// log lies there. Throws the low 16 bits of the error as a `long`.
std::wstring GetQuorvexRoamingFolder();
/// The same in the local application data folder. Throws std::runtime_error "Cannot get the
/// halvane local appdata folder".
std::wstring GetHalvaneLocalAppDataFolder();
/// The roaming application data folder with `subFolder` ('\\'-separated) under it, created
/// when missing; empty when the shell cannot give it. Natively that is $APPDATA, else
/// $HOME/.config.
std::optional<std::wstring> GetRoamingSubFolder(const std::wstring& subFolder);

}  // namespace ovklib
