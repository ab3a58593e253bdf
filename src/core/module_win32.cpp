#include "core/module_win32.h"

#include <mutex>

CModule g_module;

namespace {
std::mutex g_gitMutex;
}

CModule::~CModule() {
    // Released only while COM is still up; at process end it may not be.
    m_git = nullptr;
}

LONG CModule::Lock() { return InterlockedIncrement(&m_lockCount); }
LONG CModule::Unlock() { return InterlockedDecrement(&m_lockCount); }
LONG CModule::GetLockCount() { return m_lockCount; }

HRESULT CModule::GetGITPtr(IGlobalInterfaceTable** out) {
    if (!out) return E_POINTER;  // 0x80004003
    *out = nullptr;
    std::lock_guard lock(g_gitMutex);
    HRESULT status = S_OK;
    if (!m_git) {
        status = CoCreateInstance(CLSID_StdGlobalInterfaceTable, nullptr,
                                  /*CLSCTX_INPROC_SERVER=*/1, IID_IGlobalInterfaceTable,
                                  reinterpret_cast<void**>(&m_git));
        if (FAILED(status)) m_git = nullptr;
    }
    if (m_git) {
        m_git->AddRef();
        *out = m_git;
    }
    return status;
}

HRESULT CModule::AddCommonRGSReplacements(IQvxRegistrar* registrar) {
    if (!registrar) return E_POINTER;
    return registrar->AddReplacement(L"APPID", L"");
}
