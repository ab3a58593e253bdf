// The real plug-in DLL loaded into a benchmark's own process, with the simulated host's
// session behind it, as qvxhost.exe runs it.
#pragma once

#include "sim/host/session.h"
#include "support/os.h"
#include "support/win32_handles.h"

#include <string>

namespace qvx::bench {

/// A file beside the benchmark's program.
inline std::wstring BesideExe(const wchar_t* leaf) {
    std::wstring exe = qvx::os::ExecutablePath();
    return exe.substr(0, exe.find_last_of(L'\\') + 1) + leaf;
}

class CPlugin {
public:
    using Init = int (*)(const QvxToolkitArgs*);
    /// Loads the DLL and calls its load entry with the session's host table.
    bool Load() {
        m_module.Reset(LoadLibraryW(BesideExe(L"qvxproengineer.dll").c_str()));
        if (!m_module) return false;
        auto init = reinterpret_cast<Init>(
            reinterpret_cast<void*>(GetProcAddress(m_module.Get(), "user_initialize_plus")));
        return init && init(sim::CSession::Instance().Args()) == 0;
    }
    void Unload() {
        if (!m_module) return;
        auto term = reinterpret_cast<void (*)()>(
            reinterpret_cast<void*>(GetProcAddress(m_module.Get(), "user_terminate_plus")));
        if (term) term();
        m_module.Reset();
        sim::CSession::Instance().notifications.clear();
    }

private:
    ovklib::CModuleHandle m_module;
};

}  // namespace qvx::bench
