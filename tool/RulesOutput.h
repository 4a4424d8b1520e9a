#pragma once

#include <iosfwd>

#include "tool/Selection.h"

namespace Zorv::Tool {

/// Prints the rules of each sheet of a selection, by priority, as a table.
void printRulesTable(Selection const& selection, std::ostream& out);

/// Everything that the rule's named style sets; a style that sets nothing where it has none.
[[nodiscard]] DOM::CellStyle findStyle(Workbook::Document const& document,
                                       Workbook::Rule const& rule);

}  // namespace Zorv::Tool
