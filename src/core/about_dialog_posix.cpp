// The native build has no windows: the About dialog never opens and no module has a version.
#include "core/about_dialog.h"

namespace qvx::core {

std::wstring ModuleVersionText(void*) { return L""; }

void* ActiveWindow() { return nullptr; }

}  // namespace qvx::core

CAboutDialog::CAboutDialog(void* module) : m_module(module) {}

CAboutDialog::~CAboutDialog() = default;

std::intptr_t CAboutDialog::DoModal(void*, std::intptr_t) { return -1; }

void CAboutDialog::Destroy() {}

void CAboutDialog::OnInitDialog(void* window) { m_window = window; }

void CAboutDialog::OnDestroy() {
    m_versionControl = nullptr;
    m_window = nullptr;
}

void CAboutDialog::OnCommand(int) {}
