#include "lcd/proe_factory.h"

#include "lcd/proe_configure_callback.h"
#include "lcd/proe_data.h"

namespace qvx::lcd {

_Qvx::IInstance* CLcdProeFactory::CreateInstance(const std::wstring& classId,
                                                 std::uintptr_t parameter) {
    try {
        if (classId == _Qvx::kCidNotifyCallback) {
            return new CLcdProeConfigureCallBack(static_cast<WindowId>(parameter));
        }
        if (classId == _Qvx::kCidCadDocumentData) {
            return new CLcdProeData(static_cast<WindowId>(parameter), m_platform);
        }
    } catch (...) {
        // Whatever failed, the applet gets no object.
    }
    return nullptr;
}

}  // namespace qvx::lcd
