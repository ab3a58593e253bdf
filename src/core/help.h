// The plug-in's help: a page of the device software's compiled help file, in the user's
// language when that folder has the file, in "en-US" otherwise.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace qvx::core {

/// `home`\`langCode`\halvane.chm if `exists` says so, else `home`\en-US\halvane.chm if that
/// exists; a backslash is put after `home` when it lacks one. Empty for an empty `home` or
/// when neither file exists.
std::optional<std::wstring> FindHelpFile(std::wstring home, const std::wstring& langCode,
                                         const std::function<bool(const std::wstring&)>& exists);

/// Opens the plug-in's page of the device software's help: its folder comes from the
/// registry (HKLM "SOFTWARE\Quorvex\Halvane", "Home Directory", the 64-bit view), the
/// language from g_langCode. Does nothing when the value or the file is missing.
void OpenDriverHelp();

/// Shows `url` (a compiled help file, "::" and a page in it) in the system's help viewer.
/// Natively there is none and nothing happens.
void ShowHtmlHelp(const std::wstring& url);

}  // namespace qvx::core
