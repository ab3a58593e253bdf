#include "catalogue/cmd_res.h"

#include "catalogue/lang_file.h"
#include "support/os.h"
#include "support/text_compare.h"

#include <cctype>
#include <cstring>
#include <optional>

class CQvxProCmdRes::CQvxProCmdResPrivate {
public:
    virtual ~CQvxProCmdResPrivate() = default;
    bool m_open = false;
    std::wstring m_path;
    std::string m_activateCommand;
    std::string m_label;
    std::string m_helpText;
    std::string m_description;
    std::string m_bitmap;
    int m_isCheckButton = 0;
    // The file's values of the three translated keys (the last of each), kept so that
    // translation may come after the parse; unset when the file has no such key.
    std::optional<std::string> m_rawLabel;
    std::optional<std::string> m_rawHelpText;
    std::optional<std::string> m_rawDescription;
};

namespace {

// strtok over one buffer: skips leading separators, ends the token by overwriting the
// separator behind it with a zero byte, and goes on from there.
class CTokenizer {
public:
    explicit CTokenizer(char* start) : m_next(start) {}
    char* Next(const char* separators) {
        if (!m_next) return nullptr;
        char* p = m_next;
        while (*p && std::strchr(separators, *p)) ++p;
        if (!*p) {
            m_next = nullptr;
            return nullptr;
        }
        char* token = p;
        while (*p && !std::strchr(separators, *p)) ++p;
        if (*p) {
            *p = '\0';
            m_next = p + 1;
        } else {
            m_next = nullptr;
        }
        return token;
    }

private:
    char* m_next;
};

const char kSeparators[] = "\a\b\f\n\r\t\v \"";
const char kQuote[] = "\"";

}  // namespace

CQvxProCmdRes::CQvxProCmdRes() : m_private(std::make_unique<CQvxProCmdResPrivate>()) {}
CQvxProCmdRes::~CQvxProCmdRes() = default;

int CQvxProCmdRes::OpenUntranslated(const std::string& path) {
    if (m_private->m_open) return 0;
    m_private->m_path = qvx::os::WidenAcp(path);
    auto bytes = qvx::os::ReadWholeFile(m_private->m_path);
    if (!bytes) return 0;
    m_private->m_open = true;
    ParseText(std::string(bytes->Data()), nullptr);
    return 1;
}

int CQvxProCmdRes::Open(const std::string& path) {
    if (!OpenUntranslated(path)) return 0;
    CQvxProCmdLangFile language;
    bool translated = false;
    if (auto lang = qvx::os::GetEnv(L"LANG"); lang && !lang->empty()) {
        translated = language.Open(LanguageFileFor(m_private->m_path)) != 0;
    }
    if (translated) Translate(&language);
    return 1;
}

int CQvxProCmdRes::Close() {
    m_private->m_open = false;
    return 1;
}

void CQvxProCmdRes::ParseText(std::string text, const CQvxProCmdLangFile* languageFile) {
    CQvxProCmdResPrivate& p = *m_private;
    text.resize(std::strlen(text.c_str()));  // the text is one zero-terminated string
    p.m_isCheckButton = text.find("(CheckButton") != std::string::npos ? 1 : 0;
    Scan(text);
    Translate(languageFile);
}

void CQvxProCmdRes::Scan(std::string& text) {
    CQvxProCmdResPrivate& p = *m_private;
    std::size_t resources = text.find("(Resources");
    if (resources == std::string::npos) return;
    CTokenizer tokens(text.data() + resources + 1);
    int depth = 1;
    while (char* token = tokens.Next(kSeparators)) {
        std::size_t length = std::strlen(token);
        if (token[0] == '(') {
            ++token;
            ++depth;
        } else if (token[0] == ')') {
            ++token;
            if (depth == 1) return;
            --depth;
        } else if (length > 0 && token[length - 1] == ')') {
            if (depth == 1) return;
            --depth;
        }
        enum { kNone, kActivate, kHelp, kBitmap, kLabel, kDescription } key = kNone;
        if (p.m_activateCommand.empty() &&
            qvx::EqualsIgnoringCase(token, "command.ActivateCommand")) {
            key = kActivate;
        } else if (qvx::EqualsIgnoringCase(token, "command.HelpText")) {
            key = kHelp;
        } else if (qvx::EqualsIgnoringCase(token, "command.Bitmap")) {
            key = kBitmap;
        } else if (qvx::EqualsIgnoringCase(token, "command.Label")) {
            key = kLabel;
        } else if (qvx::EqualsIgnoringCase(token, "description.Label")) {
            key = kDescription;
        }
        if (key == kNone) continue;
        char* value = tokens.Next(kQuote);
        if (value && std::isspace(static_cast<unsigned char>(value[0])))
            value = tokens.Next(kQuote);
        if (!value) return;
        switch (key) {
            case kActivate:
                p.m_activateCommand = value;
                break;
            case kHelp:
                p.m_rawHelpText = value;
                break;
            case kBitmap:
                p.m_bitmap = value;
                break;
            case kLabel:
                p.m_rawLabel = value;
                break;
            case kDescription:
                p.m_rawDescription = value;
                break;
            default:
                break;
        }
    }
}

std::vector<std::string> CQvxProCmdRes::TranslatableValues() const {
    std::vector<std::string> values;
    for (const auto* raw :
         {&m_private->m_rawLabel, &m_private->m_rawHelpText, &m_private->m_rawDescription}) {
        if (*raw) values.push_back(**raw);
    }
    return values;
}

void CQvxProCmdRes::Translate(const CQvxProCmdLangFile* languageFile) {
    CQvxProCmdResPrivate& p = *m_private;
    auto translate = [&](const std::optional<std::string>& key) {
        std::string out;
        if (!key) return out;
        if (languageFile) {
            languageFile->Lookup(out, key->c_str());
        } else {
            out = *key;
        }
        return out;
    };
    p.m_label = translate(p.m_rawLabel);
    std::size_t amp = p.m_label.find('&');
    if (amp != std::string::npos) p.m_label.erase(amp, 1);
    p.m_helpText = translate(p.m_rawHelpText);
    p.m_description = translate(p.m_rawDescription);
}

std::string CQvxProCmdRes::GetActivateCommand() const { return m_private->m_activateCommand; }
std::string CQvxProCmdRes::GetLabel() const { return m_private->m_label; }
std::string CQvxProCmdRes::GetHelpText() const { return m_private->m_helpText; }
std::string CQvxProCmdRes::GetDescription() const { return m_private->m_description; }
std::string CQvxProCmdRes::GetBitmap() const { return m_private->m_bitmap; }
int CQvxProCmdRes::IsCheckButton() const { return m_private->m_isCheckButton; }
