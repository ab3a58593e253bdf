#include "lcd/stand_in_test_page.h"

#include "lcd/lcd_functor.h"

namespace qvx::lcd {
namespace {

class CStandInConfigureCallBack : public _Qvx::IOvkLcdFunctor, public _Qvx::IInstance {
public:
    void operator()(std::uint32_t) override {}
};

}  // namespace

_Qvx::IInstance* CStandInFactory::CreateInstance(const std::wstring& classId, std::uintptr_t) {
    if (classId == _Qvx::kCidNotifyCallback) return new CStandInConfigureCallBack();
    return nullptr;
}

}  // namespace qvx::lcd
