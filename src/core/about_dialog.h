// CAboutDialog: the small modal dialog with the plug-in's picture and version, built from
// dialog template 286 of the plug-in's resources. Handles are kept as plain pointers so that
// portable code can hold the dialog; the native build has no dialogs and never opens one.
#pragma once

#include <cstdint>
#include <string>

namespace qvx::core {

/// Control ids of dialog 286.
inline constexpr int kAboutDialogId = 286;
inline constexpr int kAboutPictureId = 1011;
inline constexpr int kAboutVersionTextId = 1012;
/// String ids: the plug-in's short name (the title) and the version notice ("%s": version).
inline constexpr std::uint32_t kAboutTitleText = 290;
inline constexpr std::uint32_t kAboutNoticeText = 291;

/// "major.minor.build" from the first three words of the file version in `module`'s version
/// block (the fourth is left out); empty when the module has no readable version block.
std::wstring ModuleVersionText(void* module);

/// The window that is active on this thread; null when none (and always natively).
void* ActiveWindow();

}  // namespace qvx::core

class CAboutDialog {
public:
    /// `module` holds the dialog template, icon, strings and version block; null: the module
    /// this code is linked into.
    explicit CAboutDialog(void* module = nullptr);
    CAboutDialog(const CAboutDialog&) = delete;
    CAboutDialog& operator=(const CAboutDialog&) = delete;
    /// Destroys the window if it is still open.
    ~CAboutDialog();

    /// Shows the dialog modally over `parent` (may be null) and returns its end code: 1 for
    /// OK, 2 for cancel, 0 when the window was destroyed, -1 when it could not be made.
    std::intptr_t DoModal(void* parent, std::intptr_t parameter);
    /// The open dialog's window; null while closed.
    void* Window() const { return m_window; }
    /// Destroys the open window; a modal loop showing it then returns.
    void Destroy();

    // Message handlers, called by the dialog procedure.
    void OnInitDialog(void* window);
    void OnDestroy();
    /// OK (1) or cancel (2): ends the modal loop with that id, or destroys a modeless window.
    void OnCommand(int id);

private:
    bool m_modal = false;
    void* m_module;
    void* m_versionControl = nullptr;
    void* m_window = nullptr;
};
