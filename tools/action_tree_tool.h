// qvxtool tree: the action tree the plug-in would build for a host installation.
#pragma once

#include <string>
#include <vector>

namespace qvx::tool {

struct CTreeOptions {
    std::string installDir;                ///< the installation and PRO_DIRECTORY
    std::string knownFile;                 ///< host command names known to the host; empty: all
    std::vector<std::string> configFiles;  ///< mapkey files, read in this order
};

/// The tree's lines, as the simulated driver records a published tree.
std::string ActionTreeLines(const CTreeOptions& options);

}  // namespace qvx::tool
