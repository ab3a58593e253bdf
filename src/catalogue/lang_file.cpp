#include "catalogue/lang_file.h"

#include "catalogue/first_occurrences.h"
#include "support/os.h"

#include <cctype>
#include <cstring>
#include <optional>
#include <unordered_map>

class CQvxProCmdLangFile::CQvxProCmdLangFilePrivate {
public:
    virtual ~CQvxProCmdLangFilePrivate() = default;
    std::optional<std::string> m_text;  ///< the whole file; a zero byte inside ends it
    bool m_open = false;
    std::wstring m_path;
    /// Keys whose first occurrence is known already (npos: nowhere); forgotten on Close.
    std::unordered_map<std::string, std::size_t> m_prepared;
};

CQvxProCmdLangFile::CQvxProCmdLangFile()
    : m_private(std::make_unique<CQvxProCmdLangFilePrivate>()) {}
CQvxProCmdLangFile::~CQvxProCmdLangFile() = default;

int CQvxProCmdLangFile::Open(const std::wstring& path) {
    if (m_private->m_open) return 0;
    m_private->m_path = path;
    auto bytes = qvx::os::ReadWholeFile(path);
    if (!bytes) return 0;
    return OpenText(std::string(bytes->Data()));
}

int CQvxProCmdLangFile::OpenText(std::string text) {
    if (m_private->m_open) return 0;
    m_private->m_text = std::move(text);
    m_private->m_open = true;
    return 1;
}

int CQvxProCmdLangFile::Close() {
    m_private->m_text.reset();
    m_private->m_prepared.clear();
    m_private->m_open = false;
    return 1;
}

void CQvxProCmdLangFile::Prepare(const std::vector<std::string>& keys) {
    if (!m_private->m_text) return;
    std::vector<std::size_t> at = FindFirstOccurrences(*m_private->m_text, keys);
    for (std::size_t i = 0; i < keys.size(); ++i) m_private->m_prepared.emplace(keys[i], at[i]);
}

int CQvxProCmdLangFile::Lookup(std::string& out, const char* key) const {
    out = key ? key : "";
    if (!key || !m_private->m_text) return 0;
    const std::string& text = *m_private->m_text;
    auto prepared = m_private->m_prepared.find(key);
    std::size_t at = prepared != m_private->m_prepared.end() ? prepared->second : text.find(key);
    if (at == std::string::npos) return 0;
    std::size_t lf = text.find('\n', at);
    if (lf == std::string::npos) return 0;
    std::size_t end = text.find('\n', lf + 1);
    std::string value = text.substr(lf + 1, end == std::string::npos ? end : end - lf - 1);
    std::size_t b = 0, e = value.size();
    while (b < e && std::isspace(static_cast<unsigned char>(value[b]))) ++b;
    while (e > b && std::isspace(static_cast<unsigned char>(value[e - 1]))) --e;
    out = value.substr(b, e - b);
    return 1;
}

std::wstring LanguageFileFor(const std::wstring& resourcePath) {
    std::wstring dir = resourcePath;
    std::size_t slash = dir.find_last_of(L"\\/");
    dir.resize(slash == std::wstring::npos ? 0 : slash);
    // The extension of the directory's last component, if it has one, is replaced.
    std::size_t lastSeparator = dir.find_last_of(L"\\/");
    std::size_t dot = dir.find_last_of(L'.');
    if (dot != std::wstring::npos && (lastSeparator == std::wstring::npos || dot > lastSeparator)) {
        dir.resize(dot);
    }
    return dir + L".txt";
}
