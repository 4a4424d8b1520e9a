#pragma once

#include <span>
#include <string>
#include <string_view>

#include "DOM/CellStyle.h"
#include "FormulaModel/FormulaValue.h"
#include "workbook/Document.h"
#include "workbook/Rule.h"

/// Values, styles and rules as JSON; docs/tool.md describes its shape. Members keep the order in
/// which they are documented, bytes that are not UTF-8 become the replacement character, and
/// unprintable characters are escaped.
///
/// JsonText.cpp is the one source that includes the JSON library, which is slow to compile.
namespace Zorv::Records {

/// Appends a quoted text.
void appendJsonText(std::string& json, std::string_view text);

/// Appends a value: a number, a text, a truth value, null for empty, or `{"error": "#DIV/0!"}`.
void appendJsonValue(std::string& json, FormulaModel::FormulaValue const& value);

/// The properties that a style sets, by the names of their members. One line.
[[nodiscard]] std::string toJsonText(DOM::CellStyle const& style);

/// The rules that decide for a cell. Long conditions and lists of ranges are shortened, since they
/// are repeated for each cell. One line.
[[nodiscard]] std::string toJsonText(std::span<Workbook::Rule const* const> deciding);

/// A rule with its formulas, and its style or the reason why it is not resolved. One line.
[[nodiscard]] std::string toJsonText(Workbook::Document const& document,
                                     Workbook::Rule const& rule);

/// JSON laid out for people: one member or element a line, two spaces for each level. Requires a
/// valid document.
[[nodiscard]] std::string indentJson(std::string_view json);

}  // namespace Zorv::Records
