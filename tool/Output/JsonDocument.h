#pragma once

#include <string>

#include "tool/Input/Selection.h"
#include "tool/Output/Report.h"

/// Frame around the records in the tool's JSON; docs/tool.md describes its shape.
namespace Zorv::Tool {

/// The first members of every document: the file and the options. One line, without the closing
/// brace, so that more members can follow.
[[nodiscard]] std::string beginJsonDocument(Selection const& selection);

/// The first members of a line about something of a sheet: the file and the sheet. Without the
/// closing brace, so that more members can follow.
[[nodiscard]] std::string beginJsonLine(Selection const& selection, Workbook::Sheet const& sheet);

/// The numbers of rules by what became of them, and what is not as it should be. One line.
[[nodiscard]] std::string toJsonSummary(Selection const& selection, Report const& report);

/// The whole document of `cndfrmt rules`, indented, without a line end.
[[nodiscard]] std::string toJsonRules(Selection const& selection, Report const& report);

}  // namespace Zorv::Tool
