#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "DOM/CellStyle.h"
#include "FormulaModel/FormulaValue.h"
#include "tool/Selection.h"

/// The parts that the tool's JSON documents share; docs/tool.md tells their shape.
namespace Zorv::Tool {

/// Members keep the order in which they are set.
using Json = nlohmann::ordered_json;

/// One line; bytes that are no UTF-8 become the replacement character.
[[nodiscard]] std::string toLine(Json const& json);

/// A number, a text, a truth value, null for empty, or `{"error": "#DIV/0!"}`.
[[nodiscard]] Json toJson(FormulaModel::FormulaValue const& value);

/// The properties that a style sets, by the names of their members.
[[nodiscard]] Json toJson(DOM::CellStyle const& style);

/// The document's head: the file and what the options say.
[[nodiscard]] Json describeRun(Selection const& selection);

/// What became of the rules, in numbers.
[[nodiscard]] Json summarise(Selection const& selection);

/// A rule's number, kind, condition, ranges, priority and stop flag.
[[nodiscard]] Json toJson(Workbook::Rule const& rule);

}  // namespace Zorv::Tool
