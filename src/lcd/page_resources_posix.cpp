#include "lcd/page_resources.h"

namespace qvx::lcd {
namespace {

class CNoPageResources : public IPageResources {
public:
    CLcdPicture LoadPlainBitmap(int) override { return {}; }
    CLcdPicture LoadSectionBitmap(int, std::optional<std::uint8_t>) override { return {}; }
    CLcdPicture LoadIconImage(int) override { return {}; }
};

}  // namespace

IPageResources& SystemPageResources() {
    static CNoPageResources resources;
    return resources;
}

}  // namespace qvx::lcd
