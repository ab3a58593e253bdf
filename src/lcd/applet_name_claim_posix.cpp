#include "lcd/applet_name_claim.h"

#include <mutex>
#include <set>

namespace qvx::lcd {
namespace {

std::mutex g_namesLock;
std::set<std::wstring> g_names;
// A handle of the native build is only a token that tells a held claim from a moved one.
int g_token;

}  // namespace

std::optional<CAppletNameClaim> CAppletNameClaim::TryClaim(const std::wstring& name) {
    std::lock_guard<std::mutex> guard(g_namesLock);
    if (!g_names.insert(name).second) return std::nullopt;
    return CAppletNameClaim(&g_token, name);
}

void CAppletNameClaim::Release() {
    if (!m_handle) return;
    m_handle = nullptr;
    std::lock_guard<std::mutex> guard(g_namesLock);
    g_names.erase(m_name);
}

std::wstring NumberedAppletName(const std::wstring& name, int n) {
    return name + L" (" + std::to_wstring(n) + L")";
}

}  // namespace qvx::lcd
