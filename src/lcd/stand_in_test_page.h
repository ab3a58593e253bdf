// A stand-in factory for the applet, until the host's own takes its place: a configure
// callback that does nothing, and no document data, so the page shows that no document is
// open.
#pragma once

#include "lcd/cad_interfaces.h"

namespace qvx::lcd {

class CStandInFactory : public _Qvx::IFactory {
public:
    _Qvx::IInstance* CreateInstance(const std::wstring& classId, std::uintptr_t parameter) override;
};

}  // namespace qvx::lcd
