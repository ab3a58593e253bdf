// The LCD client library's place is the default value of its class key's ServerBinary
// subkey; the library is loaded from there and asked for its table.
#include "lcd/lm_lcd_library.h"

#include "support/win32_handles.h"
#include "support/windows_api.h"

namespace qvx::lcd {
namespace {

constexpr char kServerBinaryKey[] =
    "SOFTWARE\\Classes\\CLSID\\{4B1D7C90-6E2A-41F3-9C55-2A7E10D3B846}\\ServerBinary";
constexpr REGSAM kReadAccess = 0x20019;  // KEY_READ
constexpr DWORD kPathBytes = 260;

class CRegistryLoader : public ILmLibraryLoader {
public:
    void* const* Load() override {
        ovklib::CRegKey key;
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kServerBinaryKey, 0, kReadAccess, key.Receive()) !=
            ERROR_SUCCESS) {
            return nullptr;
        }
        char path[kPathBytes] = {};
        DWORD size = sizeof(path) - 1;
        DWORD type = 0;
        if (RegQueryValueExA(key.Get(), nullptr, nullptr, &type, reinterpret_cast<BYTE*>(path),
                             &size) != ERROR_SUCCESS ||
            (type != REG_SZ && type != REG_EXPAND_SZ)) {
            return nullptr;
        }
        ovklib::CModuleHandle module(LoadLibraryA(path));
        if (!module) return nullptr;
        auto getInterface = reinterpret_cast<LmGetInterfaceFn>(
            reinterpret_cast<void*>(GetProcAddress(module.Get(), "GetInterface")));
        if (!getInterface) return nullptr;
        void* const* table = getInterface(kLmInterfaceVersion);
        if (!table) return nullptr;
        m_module = std::move(module);
        return table;
    }

    void Unload() override { m_module.Reset(); }

private:
    ovklib::CModuleHandle m_module;
};

}  // namespace

std::unique_ptr<ILmLibraryLoader> CreateSystemLoader() {
    return std::make_unique<CRegistryLoader>();
}

}  // namespace qvx::lcd
