#include "tool_output.h"

#include "client/oxapp/action_tree_text.h"

namespace qvx::tool {

// One escaping for every fixed format: the action tree's printer has it.
std::string EscapeField(std::string_view bytes) { return oxapp::EscapeActionField(bytes); }

}  // namespace qvx::tool
