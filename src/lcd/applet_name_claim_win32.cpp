#include "lcd/applet_name_claim.h"

#include "support/windows_api.h"

#include <stdexcept>

namespace qvx::lcd {

std::optional<CAppletNameClaim> CAppletNameClaim::TryClaim(const std::wstring& name) {
    HANDLE mutex = CreateMutexW(nullptr, /*bInitialOwner=*/TRUE, name.c_str());
    DWORD error = GetLastError();
    if (!mutex) return std::nullopt;
    if (error == ERROR_ALREADY_EXISTS) {
        CloseHandle(mutex);
        return std::nullopt;
    }
    return CAppletNameClaim(mutex, name);
}

void CAppletNameClaim::Release() {
    if (!m_handle) return;
    ReleaseMutex(m_handle);
    CloseHandle(m_handle);
    m_handle = nullptr;
}

std::wstring NumberedAppletName(const std::wstring& name, int n) {
    wchar_t* text = nullptr;
    DWORD_PTR arguments[] = {reinterpret_cast<DWORD_PTR>(name.c_str()), static_cast<DWORD_PTR>(n)};
    DWORD length = FormatMessageW(
        FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY | FORMAT_MESSAGE_ALLOCATE_BUFFER,
        L"%1!s! (%2!d!)", 0, 0, reinterpret_cast<wchar_t*>(&text), 0,
        reinterpret_cast<va_list*>(arguments));
    if (!length || !text) {
        // Only a fault in the arguments can make the formatting fail.
        throw std::invalid_argument("applet name formatting failed (0x80070057)");
    }
    std::wstring result(text, length);
    LocalFree(text);
    return result;
}

}  // namespace qvx::lcd
