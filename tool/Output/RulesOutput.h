#pragma once

#include "tool/Input/Selection.h"
#include "tool/Text/OutputBuffer.h"

namespace Zorv::Tool {

/// Prints the rules of each sheet of a selection, by priority, as a table.
void printRulesTable(Selection const& selection, OutputBuffer& out);

/// The properties that a resolved rule's named style sets, with inherited ones; none if it has no
/// named style.
[[nodiscard]] DOM::CellStyle findStyle(Workbook::Document const& document,
                                       Workbook::Rule const& rule);

}  // namespace Zorv::Tool
