// Look-ups: the position of a key in a row or a column, and the value at that position of another.

#include <array>
#include <cmath>
#include <cstdint>
#include <optional>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Grid.h"
#include "Formulas/Functions/LineSearch.h"
#include "Formulas/Values/Coercion.h"

namespace Zorv::Formulas {

namespace {

Value notFound() { return Value::error(FormulaErrorCode::NotAvailable); }

/// The key of the older functions, for which an empty value counts as 0.
Value toKey(Value const& value) noexcept { return value.isEmpty() ? Value::number(0.0) : value; }

/// A position as a number from 1.
Value toResult(std::optional<std::uint32_t> position) {
  return position ? Value::number(*position + 1.0) : notFound();
}

/// MATCH(key, line, kind): kind 0 for an equal value, 1 for the last one not above in ascending
/// order, -1 for the last one not below in descending order.
Value match(Call& call) {
  auto const grid = Grid::of(call[1]);
  if (!grid) {
    return call[1].isError() ? call[1] : notFound();
  }
  auto const line = Line::of(*grid);
  if (!line) {
    return notFound();
  }
  Value const key = toKey(call[0]);
  double const kind = call.number(2, 1.0);
  if (kind == 0.0) {
    return toResult(
        findEqual(call.evaluator(), *line, key, TextMatch::Wildcards, Direction::Forwards));
  }
  return toResult(kind > 0.0 ? findLastNotAbove(call.steps(), *line, key)
                             : findLastNotBelow(call.steps(), *line, key));
}

/// VLOOKUP(key, table, column, approximately) and HLOOKUP, where rows and columns are exchanged.
template <bool isVertical>
Value lookUpInTable(Call& call) {
  auto const grid = Grid::of(call[1]);
  if (!grid) {
    return Grid::refuse(call[1]);
  }
  double const wanted = std::trunc(call.number(2));
  if (wanted < 1.0) {
    return Value::error(FormulaErrorCode::Value);
  }
  if (wanted > (isVertical ? grid->columns() : grid->rows())) {
    return Value::error(FormulaErrorCode::Reference);
  }
  Line const line = isVertical ? Line::ofColumn(*grid, 0) : Line::ofRow(*grid, 0);
  Value const key = toKey(call[0]);
  auto const position = call.truth(3, true) ? findLastNotAbove(call.steps(), line, key)
                                            : findEqual(call.evaluator(), line, key,
                                                        TextMatch::Wildcards, Direction::Forwards);
  if (!position) {
    return notFound();
  }
  auto const other = static_cast<std::uint32_t>(wanted) - 1;
  return isVertical ? grid->at(*position, other) : grid->at(other, *position);
}

/// LOOKUP(key, table): searches the longer side, the first column of a square, and takes the value
/// of the last row or column.
Value lookUpAlongLongerSide(StepMeter& steps, Grid const& grid, Value const& key) {
  bool const isRow = grid.columns() > grid.rows();
  auto const position =
      findLastNotAbove(steps, isRow ? Line::ofRow(grid, 0) : Line::ofColumn(grid, 0), key);
  if (!position) {
    return notFound();
  }
  return isRow ? grid.at(grid.rows() - 1, *position) : grid.at(*position, grid.columns() - 1);
}

/// LOOKUP(key, line, results)
Value lookUp(Call& call) {
  auto const grid = Grid::of(call[1]);
  if (!grid) {
    return Grid::refuse(call[1]);
  }
  Value const key = toKey(call[0]);
  if (!call.isGiven(2)) {
    return lookUpAlongLongerSide(call.steps(), *grid, key);
  }
  auto const results = Grid::of(call[2]);
  if (!results) {
    return Grid::refuse(call[2]);
  }
  auto const line = Line::of(*grid);
  auto const resultLine = Line::of(*results);
  if (!line || !resultLine) {
    return notFound();
  }
  auto const position = findLastNotAbove(call.steps(), *line, key);
  return position && *position < resultLine->size() ? resultLine->at(*position) : notFound();
}

/// How XLOOKUP and XMATCH compare: equal, or the next smaller or larger, or with wildcards.
enum class XMatchMode : std::int8_t { NextSmaller = -1, Equal = 0, NextLarger = 1, Wildcards = 2 };

/// The mode and the order of a search, read from two arguments; nothing for numbers without a
/// meaning.
struct XSearch {
  XMatchMode mode = XMatchMode::Equal;
  Direction direction = Direction::Forwards;

  [[nodiscard]] static std::optional<XSearch> read(double mode, double order) {
    double const wholeMode = std::trunc(mode);
    double const wholeOrder = std::trunc(order);
    bool const hasMode = -1.0 <= wholeMode && wholeMode <= 2.0;
    bool const hasOrder = std::abs(wholeOrder) == 1.0 || std::abs(wholeOrder) == 2.0;
    if (!hasMode || !hasOrder) {
      return std::nullopt;
    }
    // The orders 2 and -2 promise a sorted line; what holds in any order holds there, too.
    return XSearch{static_cast<XMatchMode>(static_cast<int>(wholeMode)),
                   wholeOrder == -1.0 ? Direction::Backwards : Direction::Forwards};
  }

  [[nodiscard]] std::optional<std::uint32_t> run(Evaluator& evaluator, Line const& line,
                                                 Value const& key) const {
    switch (mode) {
      case XMatchMode::NextSmaller:
        return findNearest(evaluator.steps(), line, key, Side::Below, direction);
      case XMatchMode::NextLarger:
        return findNearest(evaluator.steps(), line, key, Side::Above, direction);
      default:
        return findEqual(evaluator, line, key,
                         mode == XMatchMode::Wildcards ? TextMatch::Wildcards : TextMatch::Plain,
                         direction);
    }
  }
};

/// The value of an optional mode; one left out between commas counts as absent.
Outcome<double> readMode(Call const& call, std::size_t index, double absent) {
  return call.isGiven(index) ? toNumber(call[index], call.locale()) : Outcome<double>(absent);
}

/// The line and the search of a call, or an error.
struct XArguments {
  std::optional<Line> line;
  XSearch search;
  Value error;
};

XArguments readXArguments(Call const& call, std::size_t modeIndex) {
  XArguments arguments;
  auto const grid = Grid::of(call[1]);
  arguments.error = grid ? Value::error(FormulaErrorCode::Value) : Grid::refuse(call[1]);
  auto const mode = readMode(call, modeIndex, 0.0);
  auto const order = readMode(call, modeIndex + 1, 1.0);
  if (mode.isError() || order.isError()) {
    arguments.error = mode.isError() ? mode.error() : order.error();
    return arguments;
  }
  auto const search = XSearch::read(*mode, *order);
  if (grid && search) {
    arguments.line = Line::of(*grid);
    arguments.search = *search;
  }
  return arguments;
}

/// XMATCH(key, line, mode, order)
Value xMatch(Call& call) {
  XArguments const arguments = readXArguments(call, 2);
  return arguments.line ? toResult(arguments.search.run(call.evaluator(), *arguments.line, call[0]))
                        : arguments.error;
}

/// XLOOKUP(key, line, results, otherwise, mode, order): the row or column of the results beside the
/// position of the key.
Value xLookUp(Call& call) {
  XArguments const arguments = readXArguments(call, 4);
  auto const results = Grid::of(call[2]);
  if (!arguments.line || !results) {
    return arguments.line ? Grid::refuse(call[2]) : arguments.error;
  }
  Line const& line = *arguments.line;
  if (line.size() != (line.isColumn() ? results->rows() : results->columns())) {
    return Value::error(FormulaErrorCode::Value);
  }
  auto const position = arguments.search.run(call.evaluator(), line, call[0]);
  if (!position) {
    Value const otherwise = call.has(3) ? call.evaluate(3) : Value::missing();
    return otherwise.isMissing() ? notFound() : otherwise;
  }
  Arena& arena = call.evaluator().arena();
  return line.isColumn() ? results->part(arena, *position, 0, 1, results->columns())
                         : results->part(arena, 0, *position, results->rows(), 1);
}

}  // namespace

std::span<FunctionEntry const> searchFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"HLOOKUP", "key:v, table:a, row:n, [isSorted:b]", lookUpInTable<false>,
                    "Value in a row of a table, in the column whose first cell matches a key."},
      FunctionEntry{
          "LOOKUP", "key:v, keys:a, [results:a]", lookUp,
          "Result at the position of the last key, in ascending order, that is not above a key."},
      FunctionEntry{"MATCH", "key:v, keys:a, [kind:n]", match,
                    "Position of a key, from 1; kind 0 is exact, 1 the last not above, -1 the last "
                    "not below."},
      FunctionEntry{"VLOOKUP", "key:v, table:a, column:n, [isSorted:b]", lookUpInTable<true>,
                    "Value in a column of a table, in the row whose first cell matches a key."},
      FunctionEntry{"XLOOKUP",
                    "key:v, keys:a, results:a, [ifMissing:x, match:v, direction:v]",
                    xLookUp,
                    "Result at the position of a key, with a choice of match and direction.",
                    {.returnsReference = true}},
      FunctionEntry{"XMATCH", "key:v, keys:a, [match:v, direction:v]", xMatch,
                    "Position of a key, from 1, with a choice of match and direction."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
