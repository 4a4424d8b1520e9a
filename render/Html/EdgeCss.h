#pragma once

#include <string>

#include "render/Picture.h"

namespace Zorv::Render {

/// CSS declarations that draw the lines of a cell over it; empty if there are none. They lie inside
/// the cell, along its edges: where two cells share an edge, `edges` keeps the line of one of them,
/// see SheetTable.
[[nodiscard]] std::string describeEdges(CellEdges const& edges);

}  // namespace Zorv::Render
