// Reading a resource image's bytes out of its module.
#include "client/oxapp/ox_image.h"

#include "support/boundary.h"
#include "support/win32_handles.h"
#include "support/windows_api.h"

#include <stdexcept>
#include <string>

namespace oxapp {

namespace {

using CScopedModule = ovklib::CScopedHandle<ovklib::ModuleTraits>;

/// The system's text for the calling thread's last error.
[[noreturn]] void ThrowLastError(const char* what) {
    DWORD error = GetLastError();
    char* text = nullptr;
    DWORD length = FormatMessageA(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, error, /*languageId=*/0, reinterpret_cast<char*>(&text), /*size=*/0, nullptr);
    std::string message = std::string(what) + ": ";
    message += length && text ? std::string(text, length) : "error " + std::to_string(error);
    if (text) LocalFree(text);
    throw std::runtime_error(message);
}

struct TypeSearch {
    const char* id = nullptr;
    const char* found = nullptr;
    std::string foundText;  // a type given as text must outlive the enumeration
};

BOOL CALLBACK TryType(HMODULE module, LPSTR type, LONG_PTR context) {
    // Called back by the system: a failure ends the enumeration with nothing found.
    return qvx::CallAtBoundary("COxImage::TryType", FALSE, [&]() -> BOOL {
        auto& search = *reinterpret_cast<TypeSearch*>(context);
        if (!FindResourceA(module, search.id, type)) return TRUE;
        if (IS_INTRESOURCE(type)) {
            search.found = type;
        } else {
            search.foundText = type;
            search.found = search.foundText.c_str();
        }
        return FALSE;
    });
}

}  // namespace

bool COxImage::Load() {
    if (Type() != kOxImageResource || m_fileName.empty() || !ResourceId()) return false;
    try {
        CScopedModule module(LoadLibraryA(m_fileName.c_str()));
        if (!module) return false;
        // The id is copied: SetData below replaces the storage that ResourceId points into.
        ResourceName id = m_resourceId;
        TypeSearch search;
        search.id = id.Pointer();
        // The type is found by asking each of the module's types for the id, whatever type
        // the image names: the first type that has the id is the one read.
        EnumResourceTypesA(module.Get(), &TryType, reinterpret_cast<LONG_PTR>(&search));
        if (!search.found) return false;
        HRSRC resource = FindResourceA(module.Get(), search.id, search.found);
        if (!resource) ThrowLastError("FindResource");
        HGLOBAL loaded = LoadResource(module.Get(), resource);
        if (!loaded) ThrowLastError("LoadResource");
        DWORD size = SizeofResource(module.Get(), resource);
        if (size == 0) ThrowLastError("SizeofResource");
        const void* bytes = LockResource(loaded);
        if (!bytes) ThrowLastError("LockResource");
        SetData(bytes, size);
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace oxapp
