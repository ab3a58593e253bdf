#include "sim/host/scenario.h"

namespace sim {
namespace {

bool SplitLine(const std::string& line, std::vector<std::string>& words, std::string& error) {
    std::size_t i = 0;
    while (i < line.size()) {
        char c = line[i];
        if (c == ' ' || c == '\t' || c == '\r') {
            ++i;
        } else if (c == '#') {
            break;
        } else if (c == '"') {
            std::string word;
            ++i;
            bool closed = false;
            while (i < line.size()) {
                char q = line[i++];
                if (q == '"') {
                    closed = true;
                    break;
                }
                if (q != '\\') {
                    word += q;
                    continue;
                }
                if (i >= line.size()) break;
                char e = line[i++];
                switch (e) {
                    case 'n':
                        word += '\n';
                        break;
                    case 't':
                        word += '\t';
                        break;
                    case 'r':
                        word += '\r';
                        break;
                    case '\\':
                        word += '\\';
                        break;
                    case '"':
                        word += '"';
                        break;
                    case '0':
                        word += '\0';
                        break;
                    default:
                        error = std::string("unknown escape \\") + e;
                        return false;
                }
            }
            if (!closed) {
                error = "unterminated quote";
                return false;
            }
            words.push_back(std::move(word));
        } else {
            std::size_t end = line.find_first_of(" \t\r", i);
            if (end == std::string::npos) end = line.size();
            words.push_back(line.substr(i, end - i));
            i = end;
        }
    }
    return true;
}

}  // namespace

std::vector<CScenarioStep> ParseScenario(const std::string& text,
                                         std::vector<CScenarioError>* errors) {
    std::vector<CScenarioStep> steps;
    std::size_t start = 0;
    int number = 0;
    while (start <= text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        ++number;
        CScenarioStep step;
        step.line = number;
        std::string error;
        if (!SplitLine(text.substr(start, end - start), step.words, error)) {
            if (errors) errors->push_back({number, error});
        } else if (!step.words.empty()) {
            steps.push_back(std::move(step));
        }
        start = end + 1;
    }
    return steps;
}

std::string ExpandVariables(const std::string& word,
                            const std::map<std::string, std::string>& variables) {
    std::string out;
    std::size_t i = 0;
    while (i < word.size()) {
        std::size_t open = word.find("${", i);
        if (open == std::string::npos) break;
        std::size_t close = word.find('}', open + 2);
        if (close == std::string::npos) break;
        out.append(word, i, open - i);
        auto it = variables.find(word.substr(open + 2, close - open - 2));
        if (it != variables.end()) {
            out += it->second;
        } else {
            out.append(word, open, close - open + 1);
        }
        i = close + 1;
    }
    out.append(word, i, std::string::npos);
    return out;
}

}  // namespace sim
