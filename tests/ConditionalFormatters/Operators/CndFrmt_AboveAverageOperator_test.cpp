#include "ConditionalFormatters/Operators/CndFrmt_AboveAverageOperator.h"

#include <array>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "DOM/ConditionalFormatOperator.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using Record = DOM::AboveAverageConditionalFormatOperator;
using Type = DOM::AboveAverageConditionalFormatType;

bool holds(int type, std::vector<double> const& values, FormulaValue cellValue,
           boost::optional<std::uint32_t> stdDev = boost::none) {
  std::vector<FloatNumber> numbers;
  for (double const value : values) {
    numbers.emplace_back(value);
  }
  std::unique_ptr<Operator> const condition = std::make_unique<AboveAverageOperator>(
      Record(static_cast<Type>(type), stdDev), std::move(numbers));
  return (*condition)({std::move(cellValue), CellIndex(RowIndex(0), ColumnIndex(0))});
}

struct Row {
  char const* name;
  std::vector<double> values;
  double cellNumber;
  bool above;
  bool equalOrAbove;
  bool below;
  bool equalOrBelow;
};

TEST(AboveAverageOperator, ComparesNumbersWithTheMean) {
  std::vector<Row> const rows = {
      {"below", {1, 2, 3}, 1, false, false, true, true},
      {"equal", {1, 2, 3}, 2, false, true, false, true},
      {"above", {1, 2, 3}, 3, true, true, false, false},
      {"repeats count", {1, 1, 1, 5}, 2, false, true, false, true},
      {"one number", {7}, 7, false, true, false, true},
      {"no tolerance", {0.1, 0.1, 0.1}, 0.1, false, false, true, true},
      {"a sum of zero", {-1, 1}, 0, false, true, false, true},
      {"a sum of zero, negative zero", {-1, 1}, -0.0, false, true, false, true},
      {"negative zeros", {-0.0, -0.0}, 0, false, true, false, true},
      // 1e16 + 1 is 1e16: in this order the one is lost, in others it is not.
      {"added in order", {1e16, 1, -1e16}, 0, false, true, false, true},
      {"added in another order", {1e16, -1e16, 3}, 1, false, true, false, true},
      {"a sum that overflows", {1e308, 1e308, -1e308}, 1e308, false, false, true, true},
      {"no mean: no numbers", {}, 5, false, true, false, true},
      {"no mean: a NaN", {1, nan, 3}, 5, false, true, false, true},
      {"no mean: both infinities", {infinity, -infinity}, 5, false, true, false, true},
      {"a NaN in the cell", {1, 2, 3}, nan, false, true, false, true},
  };
  for (auto const& row : rows) {
    std::array const expected = {row.above, row.equalOrAbove, row.below, row.equalOrBelow};
    for (int type = 0; type < 4; ++type) {
      EXPECT_EQ(holds(type, row.values, number(row.cellNumber)),
                expected.at(static_cast<std::size_t>(type)))
          << row.name << ", kind " << type;
    }
  }
}

std::vector<FormulaValue> const others = {empty(), text("2"), boolean(true),
                                          error(FormulaModel::FormulaErrorCode::Number)};

TEST(AboveAverageOperator, HoldsForNothingButNumbers) {
  for (int type = 0; type < 4; ++type) {
    for (auto const& other : others) {
      EXPECT_FALSE(holds(type, {1, 2, 3}, other)) << type << ", value of kind " << other.which();
      EXPECT_FALSE(holds(type, {}, other)) << type << ", value of kind " << other.which();
    }
  }
}

TEST(AboveAverageOperator, NeverHoldsWhenItMeasuresInStandardDeviations) {
  for (int type = 0; type < 5; ++type) {
    for (std::uint32_t const stdDev : {0U, 1U, 3U}) {
      for (double const cellNumber : {-100.0, 2.0, 100.0, nan}) {
        EXPECT_FALSE(holds(type, {1, 2, 3}, number(cellNumber), stdDev)) << type;
        EXPECT_FALSE(holds(type, {}, number(cellNumber), stdDev)) << type;
      }
    }
  }
}

TEST(AboveAverageOperator, AnUnknownKindNeverHolds) {
  for (int const type : {4, 255}) {
    for (double const cellNumber : {1.0, 2.0, 3.0, nan}) {
      EXPECT_FALSE(holds(type, {1, 2, 3}, number(cellNumber))) << type;
      EXPECT_FALSE(holds(type, {}, number(cellNumber))) << type;
    }
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
