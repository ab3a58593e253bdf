// CAction: anything that can be done in the host. Its text form is the identifier of a node in
// the action tree, which the driver hands back when the user presses the button it is on.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

class CAction {
public:
    enum Kind : std::int32_t {
        kUnknown = 0,      ///< "Unknown": free text, menu id kept
        kMenuItem = 1,     ///< "MenuItem": a Windows command id posted to this thread
        kS3dm = 2,         ///< "s3dm": a named handler of the process-wide table
        kProCmd = 3,       ///< "ProCmd": a host macro made from a command's name
        kProCmdCheck = 4,  ///< "ProCmd" for a check-button command; its macro carries " 1"
        kProMacro = 5,     ///< "ProMacro": a mapkey's key sequence, or a macro run as it stands
    };

    CAction() = default;
    /// For kProCmd and kProCmdCheck `text` is a command name and becomes its macro.
    CAction(std::wstring text, std::wstring label, std::int32_t kind, std::wstring image,
            std::wstring tooltip);
    /// A Windows command; `m_text` stays empty.
    CAction(std::uint32_t menuId, std::wstring label, std::int32_t kind, std::wstring image,
            std::wstring tooltip);
    CAction(const CAction&) = default;
    CAction& operator=(const CAction&) = default;
    CAction(CAction&&) noexcept = default;
    CAction& operator=(CAction&&) noexcept = default;
    virtual ~CAction() = default;

    std::wstring GetLabel() const { return m_label; }
    std::wstring GetText() const { return m_text; }
    std::wstring GetImage() const { return m_image; }
    std::wstring GetTooltip() const { return m_tooltip; }
    std::int32_t GetKind() const { return m_kind; }
    std::uint32_t GetMenuId() const { return m_menuId; }

    /// Performs the action in the host; true when it was performed. Never throws.
    bool Execute() const;

    /// The driver pressed (or released) a button carrying `id`; acts on press only.
    static void ExecuteFromDriver(const char* id, bool pressed);

    /// The text form: kind word, then the kind's fields, UTF-8.
    friend std::ostream& operator<<(std::ostream& out, const CAction& action);
    /// Reads the text form back; an unknown kind word leaves the kind as it was.
    friend std::istream& operator>>(std::istream& in, CAction& action);

    /// The text form as a string, the identifier of the action in the tree.
    std::string ToIdentifier() const;

private:
    bool ExecuteMapkey() const;

    std::uint32_t m_menuId = 0;
    std::int32_t m_kind = kUnknown;
    std::wstring m_label;
    std::wstring m_text;
    std::wstring m_image;
    std::wstring m_tooltip;
};

/// A mapkey as the catalogue holds it: its kProMacro action and its macro body (system code
/// page).
using CMapkeyEntry = std::pair<CAction, std::string>;
