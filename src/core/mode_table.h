// The host modes the plug-in names: each mode's action-set name for the driver and the id of
// its display text.
#pragma once

#include "toolkit/pro_types.h"

#include <cstdint>
#include <string>

namespace qvx::core {

struct CModeRow {
    ProMode mode;
    const char* actionSet;
    std::uint32_t textId;
};

/// The id of the display text of a mode the table does not know ("User").
inline constexpr std::uint32_t kUserModeTextId = 259;

/// The first row of the 23 for `mode`, or null. Mode 19 has no row and text 278 no mode.
const CModeRow* FindModeRow(ProMode mode);

/// The action-set name of `mode`: the table's, or "PRO_MODE_" and the number.
std::string ActionSetName(ProMode mode);

/// The display text of `mode` in UTF-8, in the plug-in's language with the default search
/// behind it; a mode outside the table shows the text of 259.
std::string ModeDisplayText(ProMode mode);

}  // namespace qvx::core
