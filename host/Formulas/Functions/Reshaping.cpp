// Functions that make arrays out of arrays.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <optional>
#include <span>
#include <vector>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Grid.h"
#include "Formulas/Functions/Numbers.h"
#include "Formulas/Functions/ValueOrder.h"
#include "Formulas/Values/Arrays.h"
#include "Formulas/Values/Coercion.h"

namespace Zorv::Formulas {

namespace {

Value nothingLeft() { return Value::error(FormulaErrorCode::Calculation); }

/// An array of the values that `valueAt(row, column)` gives; a single one is no array.
template <class ValueAt>
Value makeArray(Evaluator& evaluator, std::uint32_t rows, std::uint32_t columns,
                ValueAt const& valueAt) {
  if (rows == 1 && columns == 1) {
    return valueAt(0, 0);
  }
  std::span<Value> const values = evaluator.arena().makeArray<Value>(std::size_t{rows} * columns);
  auto value = values.begin();
  for (std::uint32_t row = 0; row < rows; ++row) {
    for (std::uint32_t column = 0; column < columns; ++column) {
      *value++ = valueAt(row, column);
    }
  }
  return Value::array(evaluator.arena().make(Array{rows, columns, rows, values.data()}));
}

/// An argument read into an array; null for a value that is no grid.
Array const* readGrid(Call const& call, std::size_t index) {
  return Grid::of(call[index]) ? &call.evaluator().toArray(call[index]) : nullptr;
}

/// An array as a list of lines of equal length: its rows, or by choice its columns.
class Lines {
public:
  Lines(Array const& array, bool areColumns) noexcept : _array(&array), _areColumns(areColumns) {}

  [[nodiscard]] std::uint32_t count() const noexcept {
    return _areColumns ? _array->columns : _array->rows;
  }
  /// How many of them differ at all: those after are like the last of these.
  [[nodiscard]] std::uint32_t storedCount() const noexcept {
    return _areColumns ? _array->columns : _array->storedRows;
  }
  [[nodiscard]] std::uint32_t length() const noexcept {
    return _areColumns ? _array->rows : _array->columns;
  }
  [[nodiscard]] Value const& at(std::uint32_t line, std::uint32_t position) const noexcept {
    return _areColumns ? _array->at(position, line) : _array->at(line, position);
  }

  /// The array of some of the lines.
  [[nodiscard]] Value select(Evaluator& evaluator, std::span<std::uint32_t const> lines) const {
    auto const count = static_cast<std::uint32_t>(lines.size());
    if (_areColumns) {
      return makeArray(
          evaluator, _array->rows, count,
          [&](std::uint32_t row, std::uint32_t column) { return at(lines[column], row); });
    }
    return makeArray(
        evaluator, count, _array->columns,
        [&](std::uint32_t row, std::uint32_t column) { return at(lines[row], column); });
  }

private:
  Array const* _array;
  bool _areColumns;
};

/// TRANSPOSE(array)
Value transpose(Call& call) {
  Array const* const array = readGrid(call, 0);
  if (array == nullptr) {
    return Grid::refuse(call[0]);
  }
  return makeArray(call.evaluator(), array->columns, array->rows,
                   [&](std::uint32_t row, std::uint32_t column) { return array->at(column, row); });
}

/// The numbers of the lines that a row or column of truth values chooses.
Outcome<std::vector<std::uint32_t>> readChosen(Lines const& truths, std::uint32_t count) {
  std::vector<std::uint32_t> chosen;
  for (std::uint32_t line = 0; line < count; ++line) {
    auto const truth = toTruth(truths.at(line, 0));
    if (truth.isError()) {
      return truth.error().asError();
    }
    if (*truth) {
      chosen.push_back(line);
    }
  }
  return chosen;
}

/// FILTER(array, truths, otherwise): the rows or the columns whose truth value is true.
Value filter(Call& call) {
  Array const* const array = readGrid(call, 0);
  Array const* const truths = readGrid(call, 1);
  if (array == nullptr || truths == nullptr) {
    return Grid::refuse(array == nullptr ? call[0] : call[1]);
  }
  bool const areRows = truths->columns == 1 && truths->rows == array->rows;
  bool const areColumns = truths->rows == 1 && truths->columns == array->columns;
  if (!areRows && !areColumns) {
    return Value::error(FormulaErrorCode::Value);
  }
  Lines const lines(*array, !areRows);
  auto const chosen = readChosen(Lines(*truths, !areRows), lines.count());
  if (chosen.isError()) {
    return chosen.error();
  }
  if (!(*chosen).empty()) {
    return lines.select(call.evaluator(), *chosen);
  }
  Value const otherwise = call.has(2) ? call.evaluate(2) : Value::missing();
  return otherwise.isMissing() ? nothingLeft() : otherwise;
}

std::weak_ordering compareLines(StepMeter& steps, Lines const& lines, std::uint32_t a,
                                std::uint32_t b) {
  for (std::uint32_t position = 0; position < lines.length(); ++position) {
    auto const order = orderValues(steps, lines.at(a, position), lines.at(b, position));
    if (order != 0) {
      return order;
    }
  }
  return std::weak_ordering::equivalent;
}

std::vector<std::uint32_t> countUp(std::uint32_t count) {
  std::vector<std::uint32_t> numbers(count);
  std::iota(numbers.begin(), numbers.end(), 0U);
  return numbers;
}

/// UNIQUE(array, byColumn, onceOnly): each line once, or the lines that occur once.
Value unique(Call& call) {
  Array const* const array = readGrid(call, 0);
  if (array == nullptr) {
    return Grid::refuse(call[0]);
  }
  Lines const lines(*array, call.truth(1, false));
  bool const onceOnly = call.truth(2, false);
  std::vector<std::uint32_t> order = countUp(lines.storedCount());
  std::ranges::stable_sort(order, [&](std::uint32_t a, std::uint32_t b) {
    return compareLines(call.steps(), lines, a, b) < 0;
  });
  bool const lastIsRepeated = lines.storedCount() < lines.count();
  std::vector<std::uint32_t> chosen;
  for (auto first = order.begin(); first != order.end();) {
    auto const next = std::find_if(first, order.end(), [&](std::uint32_t line) {
      return compareLines(call.steps(), lines, *first, line) != 0;
    });
    bool const isOnce = next - first == 1 && !(lastIsRepeated && *first + 1 == order.size());
    if (isOnce || !onceOnly) {
      chosen.push_back(*first);
    }
    first = next;
  }
  std::ranges::sort(chosen);
  return chosen.empty() ? nothingLeft() : lines.select(call.evaluator(), chosen);
}

/// By what lines are put in order: one position of each line of an array.
struct SortKey {
  Lines lines;
  std::uint32_t position = 0;
  bool isDescending = false;

  [[nodiscard]] std::weak_ordering compare(StepMeter& steps, std::uint32_t a,
                                           std::uint32_t b) const {
    Value const& left = lines.at(a, position);
    Value const& right = lines.at(b, position);
    // Empties come last in either direction.
    if (left.isEmpty() || right.isEmpty() || !isDescending) {
      return orderValues(steps, left, right);
    }
    return orderValues(steps, right, left);
  }
};

Value sortLines(Evaluator& evaluator, Lines const& lines, std::span<SortKey const> keys) {
  std::vector<std::uint32_t> order = countUp(lines.count());
  std::ranges::stable_sort(order, [&](std::uint32_t a, std::uint32_t b) {
    for (SortKey const& key : keys) {
      auto const result = key.compare(evaluator.steps(), a, b);
      if (result != 0) {
        return result < 0;
      }
    }
    return false;
  });
  return lines.select(evaluator, order);
}

/// The order that 1 (ascending) or -1 (descending) means; `#VALUE!` for other numbers.
Outcome<bool> toDescending(double order) {
  double const whole = std::trunc(order);
  return std::abs(whole) == 1.0 ? Outcome<bool>(whole < 0.0)
                                : Outcome<bool>(FormulaErrorCode::Value);
}

/// The numbers of an optional argument, or a single one where it is not given.
Outcome<std::vector<double>> readNumbers(Call const& call, std::size_t index, double absent) {
  if (!call.isGiven(index)) {
    return std::vector<double>{absent};
  }
  NumberList list(call, index, index + 1);
  if (list.error()) {
    return list.error()->asError();
  }
  return std::move(list.numbers());
}

/// The keys of SORT: positions of the lines, and an order for each or for all.
Outcome<std::vector<SortKey>> readSortKeys(Call const& call, Lines const& lines) {
  auto const positions = readNumbers(call, 1, 1.0);
  auto const orders = readNumbers(call, 2, 1.0);
  if (positions.isError() || orders.isError()) {
    return (positions.isError() ? positions.error() : orders.error()).asError();
  }
  if ((*orders).size() != 1 && (*orders).size() != (*positions).size()) {
    return FormulaErrorCode::Value;
  }
  std::vector<SortKey> keys;
  for (std::size_t i = 0; i < (*positions).size(); ++i) {
    double const position = std::trunc((*positions)[i]);
    auto const isDescending = toDescending((*orders)[(*orders).size() == 1 ? 0 : i]);
    if (isDescending.isError() || position < 1.0 || position > lines.length()) {
      return FormulaErrorCode::Value;
    }
    keys.push_back({lines, static_cast<std::uint32_t>(position) - 1, *isDescending});
  }
  return keys;
}

/// SORT(array, positions, orders, byColumn)
Value sort(Call& call) {
  Array const* const array = readGrid(call, 0);
  if (array == nullptr) {
    return Grid::refuse(call[0]);
  }
  Lines const lines(*array, call.truth(3, false));
  auto const keys = readSortKeys(call, lines);
  return keys.isError() ? keys.error() : sortLines(call.evaluator(), lines, *keys);
}

/// SORTBY(array, by, order, by, order, ...): by rows or columns beside the array.
Value sortBy(Call& call) {
  Array const* const array = readGrid(call, 0);
  if (array == nullptr) {
    return Grid::refuse(call[0]);
  }
  std::vector<SortKey> keys;
  bool areColumns = false;
  for (std::size_t i = 1; i < call.count(); i += 2) {
    Array const* const by = readGrid(call, i);
    if (by == nullptr) {
      return Grid::refuse(call[i]);
    }
    auto const orders = readNumbers(call, i + 1, 1.0);
    if (orders.isError()) {
      return orders.error();
    }
    auto const isDescending = toDescending((*orders).empty() ? 0.0 : (*orders).front());
    bool const areRows = by->columns == 1 && by->rows == array->rows;
    bool const isBesideColumns = by->rows == 1 && by->columns == array->columns;
    bool const fits = areRows || isBesideColumns;
    if (isDescending.isError() || !fits || (i > 1 && areColumns == areRows)) {
      return Value::error(FormulaErrorCode::Value);
    }
    areColumns = !areRows;
    keys.push_back({Lines(*by, areColumns), 0, *isDescending});
  }
  return sortLines(call.evaluator(), Lines(*array, areColumns), keys);
}

/// SEQUENCE(rows, columns, first, step)
Value sequence(Call& call) {
  std::array<double, 4> numbers = {1.0, 1.0, 1.0, 1.0};
  for (std::size_t i = 0; i < call.count(); ++i) {
    if (call.isGiven(i)) {
      auto const number = toNumber(call[i], call.locale());
      if (number.isError()) {
        return number.error();
      }
      numbers[i] = *number;
    }
  }
  double const rows = std::trunc(numbers[0]);
  double const columns = std::trunc(numbers[1]);
  if (rows < 1.0 || columns < 1.0) {
    return rows < 0.0 || columns < 0.0 ? Value::error(FormulaErrorCode::Value) : nothingLeft();
  }
  checkArraySize(rows, columns);
  return makeArray(call.evaluator(), static_cast<std::uint32_t>(rows),
                   static_cast<std::uint32_t>(columns),
                   [&](std::uint32_t row, std::uint32_t column) {
                     return Value::number(numbers[2] + numbers[3] * (row * columns + column));
                   });
}

/// A stretch of rows or columns.
struct Stretch {
  std::uint32_t first = 0;
  std::uint32_t count = 0;
};

/// The first lines of a number, or the last ones where it is negative; nothing where none is left.
std::optional<Stretch> take(double number, std::uint32_t count) {
  auto const taken = static_cast<std::uint32_t>(
      std::min(std::abs(std::trunc(number)), static_cast<double>(count)));
  if (taken == 0) {
    return std::nullopt;
  }
  return Stretch{number < 0.0 ? count - taken : 0, taken};
}

/// All but the first lines of a number, or all but the last ones.
std::optional<Stretch> drop(double number, std::uint32_t count) {
  double const dropped = std::min(std::abs(std::trunc(number)), static_cast<double>(count));
  double const kept = count - dropped;
  return take(number < 0.0 ? kept : -kept, count);
}

/// TAKE(array, rows, columns) and DROP
template <std::optional<Stretch> (*cut)(double, std::uint32_t)>
Value cutArray(Call& call) {
  auto const grid = Grid::of(call[0]);
  if (!grid) {
    return Grid::refuse(call[0]);
  }
  std::array<std::optional<Stretch>, 2> kept = {Stretch{0, grid->rows()},
                                                Stretch{0, grid->columns()}};
  for (std::size_t i = 0; i < kept.size(); ++i) {
    if (call.isGiven(i + 1)) {
      auto const number = toNumber(call[i + 1], call.locale());
      if (number.isError()) {
        return number.error();
      }
      kept[i] = cut(*number, kept[i]->count);
    }
  }
  if (!kept[0] || !kept[1]) {
    return nothingLeft();
  }
  return grid->part(call.evaluator().arena(), kept[0]->first, kept[1]->first, kept[0]->count,
                    kept[1]->count);
}

}  // namespace

std::span<FunctionEntry const> reshapingFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"DROP",
                    "array:a, rows:v, [columns:v]",
                    cutArray<drop>,
                    "Array without its first rows and columns, or for negative numbers its last.",
                    {.returnsReference = true}},
      FunctionEntry{"FILTER", "array:a, conditions:a, [ifEmpty:x]", filter,
                    "Rows or columns of an array whose condition holds."},
      FunctionEntry{"SEQUENCE", "rows:v, [columns:v, start:v, step:v]", sequence,
                    "Array of evenly spaced numbers, row by row."},
      FunctionEntry{"SORT", "array:a, [by:a, order:a, byColumn:b]", sort,
                    "Rows of an array in order; order 1 ascends and -1 descends."},
      FunctionEntry{"SORTBY", "array:a, by:a, (more:a)", sortBy,
                    "Rows or columns of an array in the order of other arrays, each of which an "
                    "order may follow."},
      FunctionEntry{"TAKE",
                    "array:a, rows:v, [columns:v]",
                    cutArray<take>,
                    "First rows and columns of an array, or for negative numbers its last.",
                    {.returnsReference = true}},
      FunctionEntry{"TRANSPOSE", "array:a", transpose, "Array with rows and columns exchanged."},
      FunctionEntry{"UNIQUE", "array:a, [byColumn:b, exactlyOnce:b]", unique,
                    "Rows of an array that differ, or those that occur exactly once."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
