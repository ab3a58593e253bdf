// The host's registration file (protk.dat): one keyword and its value a line, one block per
// application, each block ended by "end". The host finds a plug-in's DLL and text directory
// in it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace sim {

/// One application's block: keywords in lower case, values as written (leading and trailing
/// blanks removed).
using CProtkBlock = std::map<std::string, std::string>;

/// Every block of the file, in order; a block without its "end" still counts. Lines without
/// a value and comment lines (starting with '!' or '#') are skipped.
std::vector<CProtkBlock> ParseProtk(const std::string& text);

/// The value of `keyword` in the block named `name` (or the first block for an empty name).
std::optional<std::string> ProtkValue(const std::vector<CProtkBlock>& blocks,
                                      const std::string& name, const std::string& keyword);

}  // namespace sim
