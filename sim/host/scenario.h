// Scenario files of the simulated host: one step per line, words separated by blanks,
// "double quoted" words with \n \t \\ \" escapes, '#' starting a comment outside quotes.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace sim {

struct CScenarioStep {
    int line = 0;                    ///< 1-based line in the file
    std::vector<std::string> words;  ///< the verb first, as written (variables not expanded)
};

struct CScenarioError {
    int line = 0;
    std::string message;
};

/// Splits a scenario's text into steps; blank and comment lines give none. An unterminated
/// quote or a bad escape is an error naming its line.
std::vector<CScenarioStep> ParseScenario(const std::string& text,
                                         std::vector<CScenarioError>* errors);

/// Replaces each ${NAME} by its value; an unknown name stays as it is written.
std::string ExpandVariables(const std::string& word,
                            const std::map<std::string, std::string>& variables);

}  // namespace sim
