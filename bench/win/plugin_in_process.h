// The real plug-in DLL loaded into a benchmark's own process, with the simulated host's
// function table, as qvxhost loads it; and the files the benchmarks find beside themselves.
#pragma once

#include "sim/host/session.h"
#include "support/os.h"
#include "support/win32_handles.h"
#include "toolkit/host_table.h"

#include <string>

namespace qvx::bench {

inline std::wstring BesideExe(const wchar_t* leaf) {
    std::wstring exe = qvx::os::ExecutablePath();
    return exe.substr(0, exe.find_last_of(L'\\') + 1) + leaf;
}

class CPlugin {
public:
    /// Loads the DLL beside the program and calls its load entry; false if either fails.
    bool Load() {
        m_module.Reset(LoadLibraryW(BesideExe(L"qvxproengineer.dll").c_str()));
        if (!m_module) return false;
        auto init = reinterpret_cast<int (*)(const QvxToolkitArgs*)>(
            reinterpret_cast<void*>(GetProcAddress(m_module.Get(), "user_initialize_plus")));
        return init && init(sim::CSession::Instance().Args()) == 0;
    }
    /// Calls the unload entry and frees the DLL; the host forgets its callbacks.
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
