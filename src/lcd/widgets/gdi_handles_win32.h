// Move-only owners of the GDI resources the LCD surfaces use: objects (bitmaps, fonts,
// brushes, pens), memory device contexts, and the selection of an object into a context for
// a scope.
#pragma once

#include "support/win32_handles.h"
#include "support/windows_api.h"

#include <utility>

namespace qvx::lcd {

struct GdiObjectTraits {
    using Handle = HGDIOBJ;
    static Handle Invalid() { return nullptr; }
    static void Close(Handle h) { DeleteObject(h); }
};
struct MemoryDcTraits {
    using Handle = HDC;
    static Handle Invalid() { return nullptr; }
    static void Close(Handle h) { DeleteDC(h); }
};
struct IconTraits {
    using Handle = HICON;
    static Handle Invalid() { return nullptr; }
    static void Close(Handle h) { DestroyIcon(h); }
};

using CGdiObject = ovklib::CScopedHandle<GdiObjectTraits>;
using CMemoryDc = ovklib::CScopedHandle<MemoryDcTraits>;
using CIconHandle = ovklib::CScopedHandle<IconTraits>;

/// Selects an object into a context and puts the previous one back at the end of the scope.
class CSelection {
public:
    CSelection(HDC dc, HGDIOBJ object) : m_dc(dc), m_previous(SelectObject(dc, object)) {}
    CSelection(const CSelection&) = delete;
    CSelection& operator=(const CSelection&) = delete;
    ~CSelection() {
        if (m_previous) SelectObject(m_dc, m_previous);
    }

private:
    HDC m_dc;
    HGDIOBJ m_previous;
};

}  // namespace qvx::lcd
