// Registry string values through the Win32 registry functions.
#include "support/registry.h"
#include "support/win32_handles.h"

#include <vector>

namespace qvx::os {
namespace {

HKEY RootHandle(RegistryRoot root) {
    return root == RegistryRoot::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

}  // namespace

std::optional<std::wstring> ReadRegistryString(RegistryRoot root, const std::wstring& key,
                                               const std::wstring& value, std::size_t capacity,
                                               RegistryView view) {
    ovklib::CRegKey handle;
    REGSAM access = KEY_READ;
    BOOL wow64 = FALSE;
    if (view == RegistryView::Native64 && IsWow64Process(GetCurrentProcess(), &wow64) && wow64) {
        access |= KEY_WOW64_64KEY;
    }
    if (RegOpenKeyExW(RootHandle(root), key.c_str(), 0, access, handle.Receive()) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    if (capacity == 0) capacity = 1;
    std::vector<wchar_t> buffer(capacity + 1, L'\0');
    DWORD type = 0;
    DWORD bytes = static_cast<DWORD>(capacity * sizeof(wchar_t));
    LSTATUS status = RegQueryValueExW(handle.Get(), value.c_str(), nullptr, &type,
                                      reinterpret_cast<BYTE*>(buffer.data()), &bytes);
    if (status == ERROR_MORE_DATA) {
        // Too long for the room the caller gives: read it whole and cut it.
        std::vector<wchar_t> whole(bytes / sizeof(wchar_t) + 1, L'\0');
        status = RegQueryValueExW(handle.Get(), value.c_str(), nullptr, &type,
                                  reinterpret_cast<BYTE*>(whole.data()), &bytes);
        whole.resize(capacity);
        whole.back() = L'\0';
        buffer.assign(whole.begin(), whole.end());
        buffer.push_back(L'\0');
    }
    if (status != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) return std::nullopt;
    return std::wstring(buffer.data());
}

bool WriteRegistryString(RegistryRoot root, const std::wstring& key, const std::wstring& value,
                         const std::optional<std::wstring>& data) {
    ovklib::CRegKey handle;
    if (RegCreateKeyExW(RootHandle(root), key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                        handle.Receive(), nullptr) != ERROR_SUCCESS) {
        return false;
    }
    if (!data) return RegDeleteValueW(handle.Get(), value.c_str()) == ERROR_SUCCESS;
    auto bytes = static_cast<DWORD>((data->size() + 1) * sizeof(wchar_t));
    return RegSetValueExW(handle.Get(), value.c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(data->c_str()), bytes) == ERROR_SUCCESS;
}

}  // namespace qvx::os
