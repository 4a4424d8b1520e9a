// Functions that call a function, made by LAMBDA, for the parts of an array.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "Formulas/Evaluation/ByElement.h"
#include "Formulas/Evaluation/Call.h"
#include "Formulas/Evaluation/Lambda.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Grid.h"
#include "Formulas/Values/Arrays.h"

namespace Zorv::Formulas {

namespace {

/// The function that an argument is: an error where it is none.
struct Function {
  Lambda const* lambda = nullptr;
  Value error;

  /// The element that a call gives.
  [[nodiscard]] Value call(Evaluator& evaluator, std::span<Value const> arguments) const {
    return toElement(evaluator, callLambda(evaluator, *lambda, arguments, Mode::ByElement));
  }
};

Function readFunction(Call const& call, std::size_t index) {
  Value const value = call.evaluate(index);
  if (value.isLambda()) {
    return {&value.asLambda(), {}};
  }
  return {nullptr, value.isError() ? value : wrongValue()};
}

/// MAP(array, ..., function): of the elements at equal positions of all arrays.
Value map(Call& call) {
  std::size_t const arrayCount = call.count() - 1;
  Function const function = readFunction(call, arrayCount);
  if (function.lambda == nullptr) {
    return function.error;
  }
  std::span<Value> const arrays = call.evaluator().arena().makeArray<Value>(arrayCount);
  for (std::size_t i = 0; i < arrayCount; ++i) {
    arrays[i] = Value::array(call.evaluateArray(i));
  }
  return mapElements(call.evaluator(), arrays, [&](std::span<Value const> elements) {
    return function.call(call.evaluator(), elements);
  });
}

/// Calls a function with what it gave before and each element of an array in turn, row by row.
/// `take(result)` is called for each; returns the last result.
template <class Take>
Value accumulate(Call const& call, Function const& function, Array const& array, Take const& take) {
  Value result = call[0].isMissing() ? Value() : call[0];
  for (std::uint32_t row = 0; row < array.rows; ++row) {
    for (std::uint32_t column = 0; column < array.columns; ++column) {
      std::array const arguments = {result, array.at(row, column)};
      result = callLambda(call.evaluator(), *function.lambda, arguments, Mode::ByElement);
      take(result);
    }
  }
  return result;
}

/// REDUCE(start, array, function)
Value reduce(Call& call) {
  Function const function = readFunction(call, 2);
  if (function.lambda == nullptr) {
    return function.error;
  }
  return accumulate(call, function, call.evaluator().toArray(call[1]), [](Value const&) {});
}

/// SCAN(start, array, function): all results on the way.
Value scan(Call& call) {
  Function const function = readFunction(call, 2);
  if (function.lambda == nullptr) {
    return function.error;
  }
  Evaluator& evaluator = call.evaluator();
  Array const& array = evaluator.toArray(call[1]);
  std::span<Value> const results =
      evaluator.arena().makeArray<Value>(std::size_t{array.rows} * array.columns);
  auto next = results.begin();
  static_cast<void>(accumulate(
      call, function, array, [&](Value const& result) { *next++ = toElement(evaluator, result); }));
  return Value::array(
      evaluator.arena().make(Array{array.rows, array.columns, array.rows, results.data()}));
}

/// BYROW(array, function) and BYCOL: one element for each row or column.
template <bool areRows>
Value mapLines(Call& call) {
  auto const grid = Grid::of(call[0]);
  Function const function = readFunction(call, 1);
  if (!grid || function.lambda == nullptr) {
    return grid ? function.error : Grid::refuse(call[0]);
  }
  Arena& arena = call.evaluator().arena();
  std::uint32_t const count = areRows ? grid->rows() : grid->columns();
  std::span<Value> const results = arena.makeArray<Value>(count);
  for (std::uint32_t i = 0; i < count; ++i) {
    Value const line = areRows ? grid->part(arena, i, 0, 1, grid->columns())
                               : grid->part(arena, 0, i, grid->rows(), 1);
    results[i] = function.call(call.evaluator(), std::span(&line, 1));
  }
  std::uint32_t const rows = areRows ? count : 1;
  return Value::array(arena.make(Array{rows, areRows ? 1 : count, rows, results.data()}));
}

/// MAKEARRAY(rows, columns, function): of the positions, from 1.
Value makeArrayOfPositions(Call& call) {
  Function const function = readFunction(call, 2);
  if (function.lambda == nullptr) {
    return function.error;
  }
  double const rows = std::trunc(call.number(0));
  double const columns = std::trunc(call.number(1));
  if (rows < 1.0 || columns < 1.0) {
    return wrongValue();
  }
  checkArraySize(rows, columns);
  auto const height = static_cast<std::uint32_t>(rows);
  auto const width = static_cast<std::uint32_t>(columns);
  Arena& arena = call.evaluator().arena();
  std::span<Value> const results = arena.makeArray<Value>(std::size_t{height} * width);
  for (std::size_t i = 0; i < results.size(); ++i) {
    std::array const position = {Value::number(static_cast<double>(i / width) + 1.0),
                                 Value::number(static_cast<double>(i % width) + 1.0)};
    results[i] = function.call(call.evaluator(), position);
  }
  return Value::array(arena.make(Array{height, width, height, results.data()}));
}

}  // namespace

std::span<FunctionEntry const> iterationFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"BYCOL", "array:a, function:x", mapLines<false>,
                    "Row of what a function gives for each column of an array."},
      FunctionEntry{"BYROW", "array:a, function:x", mapLines<true>,
                    "Column of what a function gives for each row of an array."},
      FunctionEntry{"MAKEARRAY", "rows:n, columns:n, function:x", makeArrayOfPositions,
                    "Array of what a function gives for each row and column number."},
      FunctionEntry{"MAP", "array:x, function:x, (more:x)", map,
                    "Array of what a function, the last argument, gives for the elements at equal "
                    "positions of the arrays before it."},
      FunctionEntry{"REDUCE", "start:v, array:a, function:x", reduce,
                    "What a function gives for the result before and each element of an array in "
                    "turn, in the end."},
      FunctionEntry{"SCAN", "start:v, array:a, function:x", scan,
                    "The same as REDUCE, with all results on the way."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
