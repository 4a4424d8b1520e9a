// Products, squares and what sums them.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Numbers.h"
#include "Formulas/Values/Arrays.h"

namespace Zorv::Formulas {

namespace {

/// PRODUCT; 0 where there is no number.
Value product(Call& call) {
  double result = 1.0;
  bool hasNumbers = false;
  auto const error = visitNumbers(call, [&](double number, std::uint64_t times) {
    result *= times == 1 ? number : std::pow(number, static_cast<double>(times));
    hasNumbers = true;
  });
  return error ? *error : Value::number(hasNumbers ? result : 0.0);
}

Value sumOfSquares(Call& call) {
  double total = 0.0;
  auto const error = visitNumbers(call, [&](double number, std::uint64_t times) {
    total += number * number * static_cast<double>(times);
  });
  return error ? *error : Value::number(total);
}

/// The arrays that a call is given.
std::vector<Array const*> readArrays(Call const& call) {
  std::vector<Array const*> arrays;
  arrays.reserve(call.count());
  for (Value const& argument : call.arguments()) {
    arrays.push_back(&call.evaluator().toArray(argument));
  }
  return arrays;
}

bool haveSameSize(std::span<Array const* const> arrays) noexcept {
  return std::ranges::all_of(arrays, [&](Array const* array) {
    return array->rows == arrays.front()->rows && array->columns == arrays.front()->columns;
  });
}

/// How many rows of arrays of one size must be looked at: below them, all rows are alike.
std::uint32_t countDistinctRows(std::span<Array const* const> arrays) noexcept {
  auto const* const highest =
      *std::ranges::max_element(arrays, {}, [](Array const* array) { return array->storedRows; });
  return highest->storedRows;
}

/// The sum over a row of the elements' products; what is no number counts as 0. An error among the
/// elements is put into `error`.
double sumProductsOfRow(std::span<Array const* const> arrays, std::uint32_t row,
                        std::optional<Value>& error) {
  double total = 0.0;
  for (std::uint32_t column = 0; column < arrays.front()->columns; ++column) {
    double factor = 1.0;
    for (Array const* const array : arrays) {
      Value const& element = array->at(row, column);
      if (element.isError()) {
        error = element;
        return 0.0;
      }
      factor *= element.isNumber() ? element.asNumber() : 0.0;
    }
    total += factor;
  }
  return total;
}

/// SUMPRODUCT: the sum of the products of the elements at equal positions of all arrays.
Value sumProducts(Call& call) {
  std::vector<Array const*> const arrays = readArrays(call);
  if (!haveSameSize(arrays)) {
    return Value::error(FormulaErrorCode::Value);
  }
  std::uint32_t const rows = countDistinctRows(arrays);
  call.steps().spend(std::uint64_t{rows} * arrays.front()->columns * arrays.size());
  std::optional<Value> error;
  double total = 0.0;
  double ofRow = 0.0;
  for (std::uint32_t row = 0; row < rows && !error; ++row) {
    ofRow = sumProductsOfRow(arrays, row, error);
    total += ofRow;
  }
  return error ? *error : Value::number(total + ofRow * (arrays.front()->rows - rows));
}

/// Sums what `combine(x, y)` makes of the pairs of numbers in two ranges of one size; pairs with
/// anything else do not count.
template <double (*combine)(double, double) noexcept>
Value sumPairs(Call& call) {
  std::vector<Array const*> const arrays = readArrays(call);
  if (!haveSameSize(arrays)) {
    return Value::error(FormulaErrorCode::NotAvailable);
  }
  std::uint32_t const rows = countDistinctRows(arrays);
  call.steps().spend(std::uint64_t{rows} * arrays.front()->columns * arrays.size());
  double total = 0.0;
  double ofRow = 0.0;
  for (std::uint32_t row = 0; row < rows; ++row) {
    ofRow = 0.0;
    for (std::uint32_t column = 0; column < arrays[0]->columns; ++column) {
      Value const& x = arrays[0]->at(row, column);
      Value const& y = arrays[1]->at(row, column);
      if (x.isError() || y.isError()) {
        return x.isError() ? x : y;
      }
      ofRow += x.isNumber() && y.isNumber() ? combine(x.asNumber(), y.asNumber()) : 0.0;
    }
    total += ofRow;
  }
  return Value::number(total + ofRow * (arrays[0]->rows - rows));
}

double differenceOfSquares(double x, double y) noexcept { return x * x - y * y; }
double sumOfTwoSquares(double x, double y) noexcept { return x * x + y * y; }
double squareOfDifference(double x, double y) noexcept { return (x - y) * (x - y); }

/// SERIESSUM(x, n, m, coefficients): the power series that begins with the n-th power, in steps of
/// m.
Value powerSeries(Call& call) {
  double const x = call.number(0);
  double exponent = call.number(1);
  double total = 0.0;
  auto const error = visitNumbers(call, 3, 4, [&](double coefficient) {
    constexpr std::uint64_t stepsOfPower = 8;
    call.steps().spend(stepsOfPower);
    total += coefficient * std::pow(x, exponent);
    exponent += call.number(2);
  });
  return error ? *error : Value::number(total);
}

}  // namespace

std::span<FunctionEntry const> productFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"PRODUCT", "number:a, (number:a)", product, "Product of numbers."},
      FunctionEntry{"SERIESSUM", "x:n, exponent:n, step:n, coefficients:a", powerSeries,
                    "Sum of a power series."},
      FunctionEntry{"SUMPRODUCT", "array:a, (array:a)", sumProducts,
                    "Sum of the products of the elements at equal positions."},
      FunctionEntry{"SUMSQ", "number:a, (number:a)", sumOfSquares, "Sum of squares."},
      FunctionEntry{"SUMX2MY2", "x:a, y:a", sumPairs<differenceOfSquares>,
                    "Sum of the differences of squares of pairs."},
      FunctionEntry{"SUMX2PY2", "x:a, y:a", sumPairs<sumOfTwoSquares>,
                    "Sum of the sums of squares of pairs."},
      FunctionEntry{"SUMXMY2", "x:a, y:a", sumPairs<squareOfDifference>,
                    "Sum of the squared differences of pairs."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
