#pragma once

#include <string>

#include "visuals/CellVisuals.h"
#include "workbook/SheetRules.h"

namespace Zorv::Records {

/// Visuals of a cell, with the rules that gave them, as an object; docs/tool.md describes the
/// shape. One line.
[[nodiscard]] std::string toJsonText(Visuals::CellVisuals const& visuals,
                                     Workbook::VisualRules const& rules);

/// Appends that as the member `visuals`, with a comma in front; nothing if the visual formats give
/// nothing.
void appendJsonVisuals(std::string& json, Visuals::CellVisuals const& visuals,
                       Workbook::VisualRules const& rules);

}  // namespace Zorv::Records
