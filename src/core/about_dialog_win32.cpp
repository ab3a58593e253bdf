// The About dialog on Windows: a dialog box from the module's template 286.
#include "core/about_dialog.h"

#include "support/boundary.h"
#include "support/own_module_win32.h"
#include "support/text_table.h"
#include "support/windows_api.h"

#include <cwchar>
#include <utility>
#include <vector>

namespace qvx::core {
namespace {

// The dialog being made on this thread, until its procedure has attached it to the window.
thread_local CAboutDialog* t_creating = nullptr;

INT_PTR CALLBACK AboutDialogProc(HWND window, UINT message, WPARAM wParam, LPARAM) {
    return CallAtBoundary("CAboutDialog::DialogProc", INT_PTR{FALSE}, [&]() -> INT_PTR {
        auto* dialog = reinterpret_cast<CAboutDialog*>(GetWindowLongPtrW(window, DWLP_USER));
        if (!dialog && t_creating) {
            dialog = std::exchange(t_creating, nullptr);
            SetWindowLongPtrW(window, DWLP_USER, reinterpret_cast<LONG_PTR>(dialog));
        }
        if (!dialog) return FALSE;
        switch (message) {
            case WM_INITDIALOG:
                dialog->OnInitDialog(window);
                return FALSE;
            case WM_SHOWWINDOW:
                return TRUE;
            case WM_DESTROY:
                dialog->OnDestroy();
                SetWindowLongPtrW(window, DWLP_USER, 0);
                return TRUE;
            case WM_COMMAND:
                if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) {
                    dialog->OnCommand(LOWORD(wParam));
                    return TRUE;
                }
                return FALSE;
            default:
                return FALSE;
        }
    });
}

// Centres `window` on its parent, or on the screen when it has none.
void CentreOnParent(HWND window) {
    HWND parent = GetParent(window);
    RECT outer{};
    RECT own{};
    if (!GetWindowRect(parent ? parent : GetDesktopWindow(), &outer) ||
        !GetWindowRect(window, &own)) {
        return;
    }
    int x = outer.left + ((outer.right - outer.left) - (own.right - own.left)) / 2;
    int y = outer.top + ((outer.bottom - outer.top) - (own.bottom - own.top)) / 2;
    // Only the place changes: neither the size nor the Z order.
    SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
}

// The version notice with its one "%s" replaced; the text is not used as a printf format,
// so a translation with other '%' signs in it stays harmless.
std::wstring Notice(const std::wstring& version) {
    std::wstring text = LoadText(kAboutNoticeText);
    auto place = text.find(L"%s");
    if (place != std::wstring::npos) text.replace(place, 2, version);
    return text;
}

}  // namespace

std::wstring ModuleVersionText(void* module) {
    wchar_t path[MAX_PATH] = {};
    if (!GetModuleFileNameW(static_cast<HMODULE>(module), path, MAX_PATH)) return L"";
    DWORD ignored = 0;
    DWORD size = GetFileVersionInfoSizeW(path, &ignored);
    if (size == 0) return L"";
    std::vector<BYTE> block(size);
    if (!GetFileVersionInfoW(path, 0, size, block.data())) return L"";
    VS_FIXEDFILEINFO* info = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&info), &length) || !info ||
        length < sizeof(VS_FIXEDFILEINFO)) {
        return L"";
    }
    wchar_t text[64] = {};
    std::swprintf(text, 64, L"%d.%d.%d", static_cast<int>(HIWORD(info->dwFileVersionMS)),
                  static_cast<int>(LOWORD(info->dwFileVersionMS)),
                  static_cast<int>(HIWORD(info->dwFileVersionLS)));
    return text;
}

void* ActiveWindow() { return GetActiveWindow(); }

}  // namespace qvx::core

CAboutDialog::CAboutDialog(void* module) : m_module(module ? module : qvx::OwnModule()) {}

CAboutDialog::~CAboutDialog() { Destroy(); }

std::intptr_t CAboutDialog::DoModal(void* parent, std::intptr_t parameter) {
    if (m_window) return -1;
    m_modal = true;
    qvx::core::t_creating = this;
    INT_PTR result = DialogBoxParamW(
        static_cast<HMODULE>(m_module), MAKEINTRESOURCEW(qvx::core::kAboutDialogId),
        static_cast<HWND>(parent), &qvx::core::AboutDialogProc, static_cast<LPARAM>(parameter));
    qvx::core::t_creating = nullptr;
    m_modal = false;
    return result;
}

void CAboutDialog::Destroy() {
    if (m_window) DestroyWindow(static_cast<HWND>(m_window));
}

void CAboutDialog::OnInitDialog(void* handle) {
    auto window = static_cast<HWND>(handle);
    auto module = static_cast<HMODULE>(m_module);
    m_window = window;
    qvx::core::CentreOnParent(window);

    // A shared icon belongs to the system's cache: nobody destroys it.
    if (HANDLE icon =
            LoadImageW(module, MAKEINTRESOURCEW(1), IMAGE_ICON, GetSystemMetrics(SM_CXSMICON),
                       GetSystemMetrics(SM_CYSMICON), LR_SHARED)) {
        SendMessageW(window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
    }

    std::wstring notice = qvx::core::Notice(qvx::core::ModuleVersionText(m_module));
    HWND versionControl = GetDlgItem(window, qvx::core::kAboutVersionTextId);
    SetWindowTextW(versionControl, notice.c_str());
    m_versionControl = versionControl;
    SetWindowTextW(window, qvx::LoadText(qvx::core::kAboutTitleText).c_str());
}

void CAboutDialog::OnDestroy() {
    m_versionControl = nullptr;
    m_window = nullptr;
}

void CAboutDialog::OnCommand(int id) {
    if (!m_window) return;
    if (m_modal) {
        EndDialog(static_cast<HWND>(m_window), id);
    } else {
        DestroyWindow(static_cast<HWND>(m_window));
    }
}
