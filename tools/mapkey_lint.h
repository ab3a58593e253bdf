// qvxtool lint: where the plug-in reads a set of configuration files differently from what a
// user of the host expects, with file and line.
#pragma once

#include <string>
#include <vector>

namespace qvx::tool {

/// Reads the files in order, as the plug-in does, and returns one "FILE:LINE: text" finding
/// per line of interest, in reading order.
std::vector<std::string> LintMapkeyFiles(const std::vector<std::string>& files);

}  // namespace qvx::tool
