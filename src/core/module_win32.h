// CModule: the library's module object. It counts locks and hands out the process's global
// interface table, made on first use; it has nothing else of its own.
#pragma once

#include "support/win32_handles.h"

#include <objidl.h>

/// What a component registrar offers for replacements in registration scripts.
struct IQvxRegistrar {
    virtual HRESULT AddReplacement(const wchar_t* key, const wchar_t* item) = 0;

protected:
    ~IQvxRegistrar() = default;
};

class CModule {
public:
    CModule() = default;
    CModule(const CModule&) = delete;
    CModule& operator=(const CModule&) = delete;
    /// Gives back the module's reference to the global interface table. The table belongs to
    /// the COM library, which this library imports and which is therefore unloaded after it,
    /// so the release is safe at process end too.
    virtual ~CModule();

    virtual LONG Lock();
    virtual LONG Unlock();
    virtual LONG GetLockCount();
    /// The global interface table with a reference for the caller; E_POINTER for null `out`.
    virtual HRESULT GetGITPtr(IGlobalInterfaceTable** out);
    /// Adds "APPID" with the empty string.
    virtual HRESULT AddCommonRGSReplacements(IQvxRegistrar* registrar);

private:
    LONG m_lockCount = 0;
    ovklib::CComOwner<IGlobalInterfaceTable> m_git;
};

/// The one module object, made when the library loads and destroyed when it unloads.
extern CModule g_module;
