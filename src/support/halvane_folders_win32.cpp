#include "support/halvane_folders.h"
#include "support/windows_api.h"

#include <shlobj.h>

#include <stdexcept>

namespace ovklib {

static_assert(kLocalAppDataFolder == CSIDL_LOCAL_APPDATA);

std::wstring GetHalvaneFolder(int csidl) {
    wchar_t path[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathAndSubDirW(nullptr, csidl | CSIDL_FLAG_CREATE, nullptr,
                                         SHGFP_TYPE_CURRENT, L"Quorvex\\Halvane", path))) {
        throw std::runtime_error("Cannot get the halvane folder path");
    }
    return path;
}

std::wstring GetQuorvexRoamingFolder() {
    wchar_t path[MAX_PATH] = {};
    HRESULT status = SHGetFolderPathAndSubDirW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr,
                                               SHGFP_TYPE_CURRENT, L"Quorvex", path);
    if (FAILED(status)) throw static_cast<long>(status & 0xFFFF);
    return path;
}

std::optional<std::wstring> GetRoamingSubFolder(const std::wstring& subFolder) {
    wchar_t path[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathAndSubDirW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr,
                                         SHGFP_TYPE_CURRENT, subFolder.c_str(), path))) {
        return std::nullopt;
    }
    return std::wstring(path);
}

}  // namespace ovklib
