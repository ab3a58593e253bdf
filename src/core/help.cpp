#include "core/help.h"

#include "support/language_id.h"
#include "support/os.h"
#include "support/registry.h"

namespace qvx::core {
namespace {

constexpr const wchar_t* kDriverKey = L"SOFTWARE\\Quorvex\\Halvane";
constexpr std::size_t kHomeCapacity = 260;
constexpr const wchar_t* kHelpFile = L"halvane.chm";
constexpr const wchar_t* kFallbackLanguage = L"en-US";
constexpr const wchar_t* kPluginPage = L"::qvxproengineer\\default.htm";

}  // namespace

std::optional<std::wstring> FindHelpFile(std::wstring home, const std::wstring& langCode,
                                         const std::function<bool(const std::wstring&)>& exists) {
    if (home.empty()) return std::nullopt;
    if (home.back() != L'\\') home += L'\\';
    for (const std::wstring& language : {langCode, std::wstring(kFallbackLanguage)}) {
        std::wstring candidate = home + language + L'\\' + kHelpFile;
        if (exists(candidate)) return candidate;
    }
    return std::nullopt;
}

void OpenDriverHelp() {
    auto home =
        os::ReadRegistryString(os::RegistryRoot::LocalMachine, kDriverKey, L"Home Directory",
                               kHomeCapacity, os::RegistryView::Native64);
    if (!home) return;
    auto file = FindHelpFile(
        *home, g_langCode, [](const std::wstring& path) { return os::StatFile(path).has_value(); });
    if (file) ShowHtmlHelp(*file + kPluginPage);
}

}  // namespace qvx::core
