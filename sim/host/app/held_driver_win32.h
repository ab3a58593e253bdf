// The simulated driver library that the host holds for a scenario: loaded by its full path
// before the plug-in, so that the plug-in's load by name finds this copy and the driver's state
// lasts through the plug-in's unload, as a driver's own process would.
#pragma once

#include "sim/driver/control_api_win32.h"
#include "support/win32_handles.h"

#include <string>

namespace sim {

class CHeldDriver {
public:
    /// Loads the library and binds its control API; false (and nothing held) if either fails.
    bool Load(const std::wstring& path) {
        m_module.Reset(LoadLibraryW(path.c_str()));
        if (m_module && m_control.Bind(m_module.Get())) return true;
        m_module.Reset();
        return false;
    }
    /// Lets the library go: the plug-in then finds no driver unless it holds one itself.
    void Remove() {
        if (m_module) m_lastTotals = m_control.CallTotals();
        m_control = {};
        m_module.Reset();
    }
    bool IsHeld() const { return static_cast<bool>(m_module); }
    /// Valid only while IsHeld().
    qvx::simdriver::CSimDriverControl& Control() { return m_control; }
    /// Every driver function called in this run, "NAME COUNT" a line, also after removal.
    std::string CallTotals() const { return m_module ? m_control.CallTotals() : m_lastTotals; }

private:
    ovklib::CModuleHandle m_module;
    qvx::simdriver::CSimDriverControl m_control;
    std::string m_lastTotals;
};

}  // namespace sim
