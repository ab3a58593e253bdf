#include "catalogue/mapkey_file.h"

#include "catalogue/halvane_folder.h"
#include "support/os.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string_view>

class CQvxProEMapkeyFile::CQvxProEMapkeyFileImpl {
public:
    virtual ~CQvxProEMapkeyFileImpl() = default;
    std::wstring m_path;
    std::uint32_t m_size = 0;
    std::int64_t m_lastWrite = 0;  ///< seconds
};

namespace {

bool IsSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

std::string Trim(std::string_view s) {
    std::size_t b = 0, e = s.size();
    while (b < e && IsSpace(s[b])) ++b;
    while (e > b && IsSpace(s[e - 1])) --e;
    return std::string(s.substr(b, e - b));
}

// The text between `tag` and the first ';' behind it; moves the cursor behind that ';' when
// it lies at or beyond the cursor.
std::string TaggedValue(const std::string& line, const char* tag, std::size_t& cursor) {
    std::size_t at = line.find(tag);
    if (at == std::string::npos) return {};
    std::size_t start = at + std::strlen(tag);
    std::size_t semi = line.find(';', start);
    if (semi == std::string::npos) return {};
    if (semi >= cursor) cursor = semi + 1;
    return line.substr(start, semi - start);
}

// strtok with "\n\r": the next non-empty line, terminated in place; null at the end.
char* NextLine(char*& rest) {
    while (*rest == '\n' || *rest == '\r') ++rest;
    if (!*rest) return nullptr;
    char* line = rest;
    while (*rest && *rest != '\n' && *rest != '\r') ++rest;
    if (*rest) *rest++ = '\0';
    return line;
}

}  // namespace

CMapkeyDefinition ParseMapkeyLine(const std::string& line) {
    CMapkeyDefinition d;
    std::size_t cursor = line.find("mapkey ");
    cursor = cursor == std::string::npos ? line.size() : cursor + 7;
    std::size_t end = line.find_first_of(" @;", cursor);
    if (end != std::string::npos) {
        d.key = line.substr(cursor, end - cursor);
        if (!d.key.empty()) cursor = end + 1;
    }
    d.name = TaggedValue(line, "@MAPKEY_NAME", cursor);
    d.label = TaggedValue(line, "@MAPKEY_LABEL", cursor);
    if (d.name.empty()) d.name = d.label;
    if (d.label.empty()) d.label = d.name;
    if (d.name.empty()) d.name = d.label = d.key;
    d.body =
        Trim(cursor < line.size() ? std::string_view(line).substr(cursor) : std::string_view());
    if (d.body == ";") d.body.clear();
    return d;
}

void ReadMapkeyText(char* text, const std::wstring& imagePath, CMapkeyMap& map,
                    IMapkeyReadObserver* observer) {
    // Line numbers only when someone asks: where each line starts, before the tokenizer
    // overwrites the line ends.
    std::vector<std::size_t> lineStarts;
    if (observer) {
        lineStarts.push_back(0);
        for (std::size_t i = 0; text[i]; ++i) {
            if (text[i] == '\n') lineStarts.push_back(i + 1);
        }
    }
    auto lineOf = [&](const char* p) {
        auto offset = static_cast<std::size_t>(p - text);
        return static_cast<int>(std::upper_bound(lineStarts.begin(), lineStarts.end(), offset) -
                                lineStarts.begin());
    };
    char* rest = text;
    std::string logical;  // one buffer for every definition's joined line
    while (char* raw = NextLine(rest)) {
        const char* hit = std::strstr(raw, "mapkey ");
        if (!hit) continue;
        const int firstLine = observer ? lineOf(raw) : 0;
        logical.assign(hit);
        while (!logical.empty() && logical.back() == '\\') {
            logical.pop_back();
            char* next = NextLine(rest);
            if (!next) continue;
            const char* more = std::strstr(next, "mapkey(continued)");
            if (!more) {
                // The line is lost, and the join ends with it.
                if (observer) observer->OnLostContinuation(lineOf(next), next);
                continue;
            }
            more += std::strlen("mapkey(continued)");
            while (*more && IsSpace(*more)) ++more;
            logical += more;
        }
        CMapkeyDefinition d = ParseMapkeyLine(logical);
        if (observer) observer->OnDefinition(firstLine, raw, d);
        if (d.body.empty()) {
            map.erase(d.key);
            continue;
        }
        CAction action(qvx::os::WidenUtf8(d.key), qvx::os::WidenUtf8(d.label), CAction::kProMacro,
                       imagePath, qvx::os::WidenUtf8(d.name));
        map.insert_or_assign(std::move(d.key), CMapkeyEntry(std::move(action), std::move(d.body)));
    }
}

CQvxProEMapkeyFile::CQvxProEMapkeyFile(const std::wstring& path)
    : m_impl(std::make_shared<CQvxProEMapkeyFileImpl>()) {
    m_impl->m_path = path;
}

const std::wstring& CQvxProEMapkeyFile::Path() const { return m_impl->m_path; }

bool CQvxProEMapkeyFile::Read(CMapkeyMap& map) {
    auto status = qvx::os::StatFile(m_impl->m_path);
    auto bytes = qvx::os::ReadWholeFile(m_impl->m_path);
    if (!bytes) return status && !status->isDirectory;  // opened but not read: nothing added
    if (status) {
        m_impl->m_size = static_cast<std::uint32_t>(status->size);
        m_impl->m_lastWrite = status->lastWrite / 10'000'000;
    }
    std::wstring image = qvx::os::JoinPath(ovklib::GetHalvaneInstallFolder(),
                                           L"Cfg/Images/STR_PROE/Creo-Mapkey.png");
    ReadMapkeyText(bytes->Data(), image, map);
    return true;
}

bool CQvxProEMapkeyFile::Changed() {
    auto status = qvx::os::StatFile(m_impl->m_path);
    if (!status) return false;
    auto size = static_cast<std::uint32_t>(status->size);
    std::int64_t lastWrite = status->lastWrite / 10'000'000;
    if (size == m_impl->m_size && lastWrite == m_impl->m_lastWrite) return false;
    m_impl->m_size = size;
    m_impl->m_lastWrite = lastWrite;
    return true;
}
