// CAppletNameClaim: the hold of one applet name for the whole system, so that two processes
// of the same host appear on the panel under two names. On Win32 it is a named mutex, owned
// from creation; natively a name set of the process.
#pragma once

#include <optional>
#include <string>

namespace qvx::lcd {

class CAppletNameClaim {
public:
    /// Claims `name`; empty when another holder has it or the system refused.
    static std::optional<CAppletNameClaim> TryClaim(const std::wstring& name);

    CAppletNameClaim(CAppletNameClaim&& other) noexcept;
    CAppletNameClaim& operator=(CAppletNameClaim&& other) noexcept;
    CAppletNameClaim(const CAppletNameClaim&) = delete;
    CAppletNameClaim& operator=(const CAppletNameClaim&) = delete;
    ~CAppletNameClaim();

private:
    explicit CAppletNameClaim(void* handle, std::wstring name)
        : m_handle(handle), m_name(std::move(name)) {}
    void Release();

    void* m_handle = nullptr;
    std::wstring m_name;
};

/// `name` with the number `n`, in the form "name (n)".
std::wstring NumberedAppletName(const std::wstring& name, int n);

/// The name under which `friendlyName` is claimed: the host program's path with every
/// backslash made "_", then "_" and the friendly name.
std::wstring AppletClaimName(const std::wstring& programPath, const std::wstring& friendlyName);

}  // namespace qvx::lcd
