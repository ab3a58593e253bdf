// The native build has no LCD client library: the loader always reports it missing.
#include "lcd/lm_lcd_library.h"

namespace qvx::lcd {
namespace {

class CNoLibraryLoader : public ILmLibraryLoader {
public:
    void* const* Load() override { return nullptr; }
    void Unload() override {}
};

}  // namespace

std::unique_ptr<ILmLibraryLoader> CreateSystemLoader() {
    return std::make_unique<CNoLibraryLoader>();
}

}  // namespace qvx::lcd
