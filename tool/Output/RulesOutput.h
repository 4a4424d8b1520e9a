#pragma once

#include "tool/Input/Selection.h"
#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Terminal.h"

namespace Zorv::Tool {

/// Prints the rules of each sheet of a selection, by priority, as a table.
void printRulesTable(Selection const& selection, Terminal const& terminal, OutputBuffer& out);

/// Prints them as separated values; the line of headings stands before the first file alone.
void printRulesFields(Selection const& selection, bool isFirstFile, OutputBuffer& out);

/// Prints them as one JSON object a line.
void printRulesJsonLines(Selection const& selection, OutputBuffer& out);

}  // namespace Zorv::Tool
