#include "lcd/applet_name_claim.h"

#include <utility>

namespace qvx::lcd {

CAppletNameClaim::CAppletNameClaim(CAppletNameClaim&& other) noexcept
    : m_handle(std::exchange(other.m_handle, nullptr)), m_name(std::move(other.m_name)) {}

CAppletNameClaim& CAppletNameClaim::operator=(CAppletNameClaim&& other) noexcept {
    if (this != &other) {
        Release();
        m_handle = std::exchange(other.m_handle, nullptr);
        m_name = std::move(other.m_name);
    }
    return *this;
}

CAppletNameClaim::~CAppletNameClaim() { Release(); }

std::wstring AppletClaimName(const std::wstring& programPath, const std::wstring& friendlyName) {
    std::wstring name = programPath;
    for (wchar_t& c : name) {
        if (c == L'\\') c = L'_';
    }
    return name + L"_" + friendlyName;
}

}  // namespace qvx::lcd
