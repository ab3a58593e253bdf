#include "mapkey_lint.h"

#include "catalogue/mapkey_file.h"
#include "support/os.h"

#include <cstring>
#include <map>

namespace qvx::tool {
namespace {

struct Place {
    std::string file;
    int line;
};

class CLintObserver : public IMapkeyReadObserver {
public:
    CLintObserver(std::vector<std::string>& findings, std::map<std::string, Place>& defined)
        : m_findings(findings), m_defined(defined) {}
    std::string file;

    void OnDefinition(int line, const std::string& raw, const CMapkeyDefinition& d) override {
        std::string where = file + ":" + std::to_string(line) + ": ";
        std::size_t hit = raw.find("mapkey ");
        if (raw.find('!') < hit) {
            m_findings.push_back(where +
                                 "commented out with '!', but the plug-in still reads "
                                 "this definition of '" +
                                 d.key + "'");
        }
        if (d.key.empty()) {
            m_findings.push_back(where +
                                 "empty key: the plug-in keeps this under the empty key, "
                                 "named after nothing");
        }
        auto it = m_defined.find(d.key);
        if (d.body.empty()) {
            m_findings.push_back(where + "erases '" + d.key + "'" +
                                 (it != m_defined.end() ? ", defined at " + it->second.file + ":" +
                                                              std::to_string(it->second.line)
                                                        : ", which nothing before defines"));
            if (it != m_defined.end()) m_defined.erase(it);
            return;
        }
        if (it != m_defined.end()) {
            m_findings.push_back(where + "replaces '" + d.key + "' defined at " + it->second.file +
                                 ":" + std::to_string(it->second.line));
        }
        m_defined[d.key] = {file, line};
    }

    void OnLostContinuation(int line, const std::string&) override {
        m_findings.push_back(file + ":" + std::to_string(line) +
                             ": follows a line ending in '\\' but lacks \"mapkey(continued)\": "
                             "the plug-in drops this line and ends the definition before it");
    }

private:
    std::vector<std::string>& m_findings;
    std::map<std::string, Place>& m_defined;
};

// Lines the plug-in never reads as definitions: the word in capitals.
void FindCapitalWords(const std::string& file, const std::string& text,
                      std::vector<std::string>& findings) {
    int line = 1;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        std::string row = text.substr(start, end - start);
        if (row.find("mapkey ") == std::string::npos && row.find("MAPKEY ") != std::string::npos) {
            findings.push_back(file + ":" + std::to_string(line) +
                               ": 'MAPKEY' in capitals: the plug-in does not read this line");
        }
        ++line;
        start = end + 1;
    }
}

}  // namespace

std::vector<std::string> LintMapkeyFiles(const std::vector<std::string>& files) {
    std::vector<std::string> findings;
    std::map<std::string, Place> defined;
    CLintObserver observer(findings, defined);
    for (const std::string& file : files) {
        auto bytes = os::ReadWholeFile(os::WidenUtf8(file));
        if (!bytes) {
            findings.push_back(file + ": cannot be opened; skipped");
            continue;
        }
        std::string text(bytes->Data());
        FindCapitalWords(file, text, findings);
        observer.file = file;
        CMapkeyMap map;
        ReadMapkeyText(bytes->Data(), L"", map, &observer);
    }
    return findings;
}

}  // namespace qvx::tool
