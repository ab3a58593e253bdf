#include "core/mode_table.h"

#include "support/os.h"
#include "support/text_table.h"

#include <iterator>

namespace qvx::core {
namespace {

// Searched in order for the first equal value. -2 names a string id that no language holds,
// so its display text is empty.
constexpr CModeRow kModes[] = {
    {-2, "PRO_MODE_MECHANICA", 282},    {-1, "PRO_MODE_UNUSED", 281},
    {18, "PRO_MODE_USER_DEFINED", 259}, {0, "PRO_MODE_SKETCHER", 260},
    {1, "PRO_MODE_PART", 261},          {2, "PRO_MODE_SHEET_METAL", 262},
    {3, "PRO_MODE_COMPOSITE", 263},     {4, "PRO_MODE_SCAN_MODEL", 264},
    {5, "PRO_MODE_ASSEMBLY", 265},      {6, "PRO_MODE_DRAWING", 266},
    {7, "PRO_MODE_MANUFACTURE", 267},   {8, "PRO_MODE_MOLD", 268},
    {9, "PRO_MODE_CAST", 269},          {10, "PRO_MODE_DIEFACE", 270},
    {11, "PRO_MODE_LAYOUT", 271},       {12, "PRO_MODE_FORMAT", 272},
    {13, "PRO_MODE_REPORT", 273},       {14, "PRO_MODE_MARKUP", 274},
    {15, "PRO_MODE_DIAGRAM", 275},      {16, "PRO_MODE_INTERCHANGE", 276},
    {17, "PRO_MODE_LEGACY", 277},       {20, "PRO_MODE_PROCESS", 279},
    {21, "PRO_MODE_NC_MODEL", 280},
};
static_assert(std::size(kModes) == 23);

}  // namespace

const CModeRow* FindModeRow(ProMode mode) {
    for (const CModeRow& row : kModes) {
        if (row.mode == mode) return &row;
    }
    return nullptr;
}

std::string ActionSetName(ProMode mode) {
    const CModeRow* row = FindModeRow(mode);
    return row ? row->actionSet : "PRO_MODE_" + std::to_string(mode);
}

std::string ModeDisplayText(ProMode mode) {
    const CModeRow* row = FindModeRow(mode);
    return os::NarrowUtf8(LoadText(row ? row->textId : kUserModeTextId));
}

}  // namespace qvx::core
