#pragma once

#include <span>
#include <string>
#include <string_view>

#include "DOM/CellStyle.h"
#include "FormulaModel/FormulaValue.h"
#include "tool/Input/Selection.h"
#include "tool/Output/Report.h"

/// The tool's JSON as text; docs/tool.md describes its shape. Members keep the order in which they
/// are documented, bytes that are not UTF-8 become the replacement character, and unprintable
/// characters are escaped.
///
/// JsonText.cpp is the one source that includes the JSON library, which is slow to compile.
namespace Zorv::Tool {

/// Appends a quoted text.
void appendJsonText(std::string& json, std::string_view text);

/// Appends a value: a number, a text, a truth value, null for empty, or `{"error": "#DIV/0!"}`.
void appendJsonValue(std::string& json, FormulaModel::FormulaValue const& value);

/// The properties that a style sets, by the names of their members. One line.
[[nodiscard]] std::string toJsonText(DOM::CellStyle const& style);

/// The rules that decide for a cell. Long conditions and lists of ranges are shortened, since they
/// are repeated for each cell. One line.
[[nodiscard]] std::string toJsonText(std::span<Workbook::Rule const* const> deciding);

/// The first members of every document: the file and the options. One line, without the closing
/// brace, so that more members can follow.
[[nodiscard]] std::string beginJsonDocument(Selection const& selection);

/// The first members of a line about something of a sheet: the file and the sheet. Without the
/// closing brace, so that more members can follow.
[[nodiscard]] std::string beginJsonLine(Selection const& selection, Workbook::Sheet const& sheet);

/// A rule with its formulas, and its style or the reason why it is not resolved. One line.
[[nodiscard]] std::string toJsonText(Workbook::Document const& document,
                                     Workbook::Rule const& rule);

/// The numbers of rules by what became of them, and what is not as it should be. One line.
[[nodiscard]] std::string toJsonSummary(Selection const& selection, Report const& report);

/// The whole document of `cndfrmt rules`, indented, without a line end.
[[nodiscard]] std::string toJsonRules(Selection const& selection, Report const& report);

}  // namespace Zorv::Tool
