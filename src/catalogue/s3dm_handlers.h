// The process-wide table of named handlers that kS3dm actions run. It starts empty and no
// part of the plug-in registers into it: it is the extension point for built-in functions.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace qvx::catalogue {

struct CS3dmHandler {
    std::function<void()> invoke;
};

/// Keyed by the handler's narrow name (system code page).
std::map<std::string, CS3dmHandler>& S3dmHandlers();

}  // namespace qvx::catalogue
