// The factory the LCD applet asks for the host's objects by class id: the configure callback
// and the document data.
#pragma once

#include "lcd/applet_platform.h"
#include "lcd/cad_interfaces.h"

namespace qvx::lcd {

class CLcdProeFactory : public _Qvx::IFactory {
public:
    explicit CLcdProeFactory(IAppletPlatform& platform = SystemAppletPlatform())
        : m_platform(platform) {}
    /// `parameter` is the LCD window; null for an unknown id or when making the object failed.
    _Qvx::IInstance* CreateInstance(const std::wstring& classId, std::uintptr_t parameter) override;

private:
    IAppletPlatform& m_platform;
};

}  // namespace qvx::lcd
