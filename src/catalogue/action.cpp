// CAction: macro building, the text form, and execution in the host.
#include "catalogue/action.h"

#include "catalogue/mapkey_lookup.h"
#include "catalogue/s3dm_handlers.h"
#include "support/boundary.h"
#include "support/main_loop.h"
#include "support/os.h"
#include "support/text_compare.h"
#include "toolkit/undostack_bypass.h"
#include "toolkit/pro_toolkit.h"

#include <array>
#include <cctype>
#include <istream>
#include <iterator>
#include <ostream>
#include <sstream>

namespace {

struct DisplayMacro {
    const wchar_t* command;
    const wchar_t* macro;
};

// Display styles switch through the host's display command and repaint; these macros have no
// closing ';'.
constexpr std::array<DisplayMacro, 4> kDisplayMacros = {{
    {L"ProCmdViewWireframe",
     L"~ Command `ProCmdEnvMdlDisp` `Wireframe`;~ Command `ProCmdViewRepaint`"},
    {L"ProCmdViewHiddenline",
     L"~ Command `ProCmdEnvMdlDisp` `Hidden line`;~ Command `ProCmdViewRepaint`"},
    {L"ProCmdViewNoHidden",
     L"~ Command `ProCmdEnvMdlDisp` `No hidden`;~ Command `ProCmdViewRepaint`"},
    {L"ProCmdViewShaded", L"~ Command `ProCmdEnvMdlDisp` `Shading`;~ Command `ProCmdViewRepaint`"},
}};

std::wstring MakeMacro(const std::wstring& name, std::int32_t kind) {
    for (const DisplayMacro& row : kDisplayMacros) {
        if (qvx::EqualsIgnoringCase(name, row.command)) return row.macro;
    }
    return L"~ Command `" + name + L"`" + (kind == CAction::kProCmdCheck ? L" 1" : L"") + L";";
}

bool IsBlank(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

}  // namespace

CAction::CAction(std::wstring text, std::wstring label, std::int32_t kind, std::wstring image,
                 std::wstring tooltip)
    : m_kind(kind),
      m_label(std::move(label)),
      m_text(std::move(text)),
      m_image(std::move(image)),
      m_tooltip(std::move(tooltip)) {
    if (kind == kProCmd || kind == kProCmdCheck) m_text = MakeMacro(m_text, kind);
}

CAction::CAction(std::uint32_t menuId, std::wstring label, std::int32_t kind, std::wstring image,
                 std::wstring tooltip)
    : m_menuId(menuId),
      m_kind(kind),
      m_label(std::move(label)),
      m_image(std::move(image)),
      m_tooltip(std::move(tooltip)) {}

std::ostream& operator<<(std::ostream& out, const CAction& action) {
    std::string text = qvx::os::NarrowUtf8(action.m_text);
    switch (action.m_kind) {
        case CAction::kUnknown:
            out << "Unknown " << action.m_menuId << ' ' << text;
            break;
        case CAction::kMenuItem:
            out << "MenuItem " << action.m_menuId;
            break;
        case CAction::kS3dm:
            out << "s3dm " << text;
            break;
        case CAction::kProCmd:
        case CAction::kProCmdCheck:
            out << "ProCmd " << text;
            break;
        case CAction::kProMacro:
            out << "ProMacro " << text;
            break;
        default:
            break;
    }
    return out;
}

std::istream& operator>>(std::istream& in, CAction& action) {
    std::string word;
    in >> word;
    if (word == "Unknown") {
        action.m_kind = CAction::kUnknown;
        in >> action.m_menuId;
    } else if (word == "s3dm") {
        action.m_kind = CAction::kS3dm;
    } else if (word == "MenuItem") {
        action.m_kind = CAction::kMenuItem;
        in >> action.m_menuId;
    } else if (word == "ProMacro") {
        action.m_kind = CAction::kProMacro;
    } else if (word == "ProCmd") {
        action.m_kind = CAction::kProCmd;
    }
    std::string rest(std::istreambuf_iterator<char>(in), {});
    std::size_t start = 0;
    while (start < rest.size() && std::isspace(static_cast<unsigned char>(rest[start]))) ++start;
    if (start < rest.size()) action.m_text = qvx::os::WidenUtf8(rest.substr(start));
    while (!action.m_text.empty() && IsBlank(action.m_text.back())) action.m_text.pop_back();
    return in;
}

std::string CAction::ToIdentifier() const {
    std::ostringstream out;
    out << *this;
    return out.str();
}

bool CAction::Execute() const {
    return qvx::CallAtBoundary("CAction::Execute", false, [this] {
        CQvxUndostackClearBypass bypass(true);
        switch (m_kind) {
            case kMenuItem:
                return m_menuId != 0 && qvx::MainLoop().PostCommand(m_menuId);
            case kS3dm: {
                auto& handlers = qvx::catalogue::S3dmHandlers();
                auto it = handlers.find(qvx::os::NarrowAcp(m_text));
                if (it == handlers.end() || !it->second.invoke) return false;
                it->second.invoke();
                return true;
            }
            case kProCmd:
                return ProMacroLoad(m_text.c_str()) == PRO_TK_NO_ERROR;
            case kProMacro:
                return ExecuteMapkey();
            default:
                return false;
        }
    });
}

bool CAction::ExecuteMapkey() const {
    // The key's own definitions first, in the merged map's order; then the key itself as a
    // macro, which serves deleted mapkeys and fixed macro texts alike.
    std::vector<CMapkeyEntry> mapkeys;
    qvx::catalogue::GetMergedMapkeys(mapkeys);
    for (const CMapkeyEntry& entry : mapkeys) {
        if (entry.first.m_text != m_text) continue;
        std::wstring body = qvx::os::WidenAcp(entry.second);
        if (ProMacroLoad(body.c_str()) == PRO_TK_NO_ERROR) return true;
    }
    return ProMacroLoad(m_text.c_str()) == PRO_TK_NO_ERROR;
}

void CAction::ExecuteFromDriver(const char* id, bool pressed) {
    if (!pressed) return;
    qvx::CallAtBoundary("CAction::ExecuteFromDriver", [id] {
        CQvxUndostackClearBypass bypass(true);
        CAction action;
        std::istringstream in(id ? id : "");
        in >> action;
        action.Execute();
    });
}
