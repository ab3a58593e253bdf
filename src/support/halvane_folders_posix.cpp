// The native build keeps the per-user folders under $HOME/.local/share.
#include "support/halvane_folders.h"
#include "support/os.h"

#include <filesystem>
#include <stdexcept>

namespace ovklib {

std::wstring GetHalvaneFolder(int) {
    auto home = qvx::os::GetEnv(L"HOME");
    if (!home || home->empty()) throw std::runtime_error("Cannot get the halvane folder path");
    std::filesystem::path dir = std::filesystem::path(qvx::os::NarrowUtf8(*home)) / ".local" /
                                "share" / "Quorvex" / "Halvane";
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    if (ec) throw std::runtime_error("Cannot get the halvane folder path");
    return qvx::os::WidenUtf8(dir.string());
}

std::wstring GetQuorvexRoamingFolder() {
    // ERROR_PATH_NOT_FOUND, as the shell would give it.
    constexpr long kPathNotFound = 3;
    auto home = qvx::os::GetEnv(L"HOME");
    if (!home || home->empty()) throw kPathNotFound;
    std::filesystem::path dir =
        std::filesystem::path(qvx::os::NarrowUtf8(*home)) / ".config" / "Quorvex";
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    if (ec) throw kPathNotFound;
    return qvx::os::WidenUtf8(dir.string());
}

std::optional<std::wstring> GetRoamingSubFolder(const std::wstring& subFolder) {
    std::filesystem::path dir;
    if (auto appData = qvx::os::GetEnv(L"APPDATA"); appData && !appData->empty()) {
        dir = qvx::os::NarrowUtf8(*appData);
    } else if (auto home = qvx::os::GetEnv(L"HOME"); home && !home->empty()) {
        dir = std::filesystem::path(qvx::os::NarrowUtf8(*home)) / ".config";
    } else {
        return std::nullopt;
    }
    std::string sub = qvx::os::NarrowUtf8(subFolder);
    for (char& c : sub) {
        if (c == '\\') c = '/';
    }
    dir /= sub;
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    if (ec) return std::nullopt;
    return qvx::os::WidenUtf8(dir.string());
}

}  // namespace ovklib
