#include "core/module_win32.h"

#include <mutex>

CModule g_module;

namespace {
std::mutex g_gitMutex;
}

CModule::~CModule() = default;

LONG CModule::Lock() { return InterlockedIncrement(&m_lockCount); }
LONG CModule::Unlock() { return InterlockedDecrement(&m_lockCount); }
LONG CModule::GetLockCount() { return m_lockCount; }

HRESULT CModule::GetGITPtr(IGlobalInterfaceTable** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    std::lock_guard lock(g_gitMutex);
    HRESULT status = S_OK;
    if (!m_git) {
        // What a failed creation leaves in its out-parameter is not trusted.
        IGlobalInterfaceTable* made = nullptr;
        status = CoCreateInstance(CLSID_StdGlobalInterfaceTable, nullptr, CLSCTX_INPROC_SERVER,
                                  IID_IGlobalInterfaceTable, reinterpret_cast<void**>(&made));
        if (SUCCEEDED(status)) m_git.Reset(made);
    }
    if (m_git) {
        m_git.Get()->AddRef();
        *out = m_git.Get();
    }
    return status;
}

HRESULT CModule::AddCommonRGSReplacements(IQvxRegistrar* registrar) {
    if (!registrar) return E_POINTER;
    return registrar->AddReplacement(L"APPID", L"");
}
