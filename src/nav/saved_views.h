// Three view slots kept in the host's model under fixed names: a long press of a slot's button
// stores the current view, a short one brings it back. The driver measures the press.
#pragma once

#include <string>

namespace qvx::nav {

void ViewStore(std::string name);
void ViewRetrieve(std::string name);

}  // namespace qvx::nav
