// Move-only owners of Win32 handles: one template, one traits type per kind of handle.
// Copy is deleted; Take() hands ownership away; the destructor releases. Also the owner of a
// critical section, which is no handle but is made and deleted the same way, and of one
// reference to a COM interface.
#pragma once

#include "support/windows_api.h"

#include <utility>

namespace ovklib {

template <typename Traits>
class CScopedHandle {
public:
    using Handle = typename Traits::Handle;

    CScopedHandle() = default;
    explicit CScopedHandle(Handle handle) : m_handle(handle) {}
    CScopedHandle(const CScopedHandle&) = delete;
    CScopedHandle& operator=(const CScopedHandle&) = delete;
    CScopedHandle(CScopedHandle&& other) noexcept : m_handle(other.Take()) {}
    CScopedHandle& operator=(CScopedHandle&& other) noexcept {
        if (this != &other) Reset(other.Take());
        return *this;
    }
    ~CScopedHandle() { Reset(); }

    Handle Get() const { return m_handle; }
    explicit operator bool() const { return m_handle != Traits::Invalid(); }
    /// Gives up ownership; the caller closes the handle.
    Handle Take() { return std::exchange(m_handle, Traits::Invalid()); }
    void Reset(Handle handle = Traits::Invalid()) {
        Handle old = std::exchange(m_handle, handle);
        if (old != Traits::Invalid()) Traits::Close(old);
    }
    /// For out-parameters of creating calls: releases what is held and points at the slot.
    Handle* Receive() {
        Reset();
        return &m_handle;
    }

private:
    Handle m_handle = Traits::Invalid();
};

struct FileHandleTraits {
    using Handle = HANDLE;
    static Handle Invalid() { return INVALID_HANDLE_VALUE; }
    static void Close(Handle h) { CloseHandle(h); }
};
struct KernelHandleTraits {
    using Handle = HANDLE;
    static Handle Invalid() { return nullptr; }
    static void Close(Handle h) { CloseHandle(h); }
};
struct RegKeyTraits {
    using Handle = HKEY;
    static Handle Invalid() { return nullptr; }
    static void Close(Handle h) { RegCloseKey(h); }
};
struct FindHandleTraits {
    using Handle = HANDLE;
    static Handle Invalid() { return INVALID_HANDLE_VALUE; }
    static void Close(Handle h) { FindClose(h); }
};
struct ModuleTraits {
    using Handle = HMODULE;
    static Handle Invalid() { return nullptr; }
    static void Close(Handle h) { FreeLibrary(h); }
};
struct WindowTraits {
    using Handle = HWND;
    static Handle Invalid() { return nullptr; }
    static void Close(Handle h) { DestroyWindow(h); }
};
struct MenuTraits {
    using Handle = HMENU;
    static Handle Invalid() { return nullptr; }
    static void Close(Handle h) { DestroyMenu(h); }
};

/// A critical section owned for its whole life: made with a spin count, deleted by the
/// destructor. Neither copied nor moved, since the system keeps its address. lock() and
/// unlock() let std::lock_guard hold it for a scope.
class CCriticalSection {
public:
    explicit CCriticalSection(DWORD spinCount) {
        InitializeCriticalSectionAndSpinCount(&m_section, spinCount);
    }
    CCriticalSection(const CCriticalSection&) = delete;
    CCriticalSection& operator=(const CCriticalSection&) = delete;
    ~CCriticalSection() { DeleteCriticalSection(&m_section); }

    void lock() { EnterCriticalSection(&m_section); }
    void unlock() { LeaveCriticalSection(&m_section); }

private:
    CRITICAL_SECTION m_section;
};

/// One reference to a COM interface, given back with Release by the destructor.
template <typename Interface>
class CComOwner {
public:
    CComOwner() = default;
    /// Takes over the reference the caller holds.
    explicit CComOwner(Interface* held) : m_held(held) {}
    CComOwner(const CComOwner&) = delete;
    CComOwner& operator=(const CComOwner&) = delete;
    CComOwner(CComOwner&& other) noexcept : m_held(other.Take()) {}
    CComOwner& operator=(CComOwner&& other) noexcept {
        if (this != &other) Reset(other.Take());
        return *this;
    }
    ~CComOwner() { Reset(); }

    Interface* Get() const { return m_held; }
    explicit operator bool() const { return m_held != nullptr; }
    /// Gives up the reference; the caller releases it.
    Interface* Take() { return std::exchange(m_held, nullptr); }
    void Reset(Interface* held = nullptr) {
        if (Interface* old = std::exchange(m_held, held)) old->Release();
    }

private:
    Interface* m_held = nullptr;
};

using CFileHandle = CScopedHandle<FileHandleTraits>;
using CKernelHandle = CScopedHandle<KernelHandleTraits>;
using CRegKey = CScopedHandle<RegKeyTraits>;
using CFindHandle = CScopedHandle<FindHandleTraits>;
using CModuleHandle = CScopedHandle<ModuleTraits>;
using CWindowHandle = CScopedHandle<WindowTraits>;
using CMenuHandle = CScopedHandle<MenuTraits>;

}  // namespace ovklib
