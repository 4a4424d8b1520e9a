#include "ConditionalFormatters/Operators/CndFrmt_TopBottomOperator.h"

#include <sys/mman.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "DOM/ConditionalFormatOperator.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Record = DOM::TopBottomConditionalFormatOperator;
using Type = DOM::TopBottomConditionalFormatType;

constexpr bool percent = true;
constexpr bool count = false;
constexpr std::uint32_t largestValue = std::numeric_limits<std::uint32_t>::max();

std::unique_ptr<Operator> makeCondition(Record const& record, std::vector<double> const& values) {
  return std::make_unique<TopBottomOperator>(
      record, std::vector<FloatNumber>(values.begin(), values.end()));
}

bool holds(Operator const& condition, FormulaValue value) {
  return condition({std::move(value), CellIndex(RowIndex(0), ColumnIndex(0))});
}

/// The numbers of the ranges that match, in their order.
std::vector<double> findMatches(Record const& record, std::vector<double> const& values) {
  auto const condition = makeCondition(record, values);
  std::vector<double> matches;
  for (double const value : values) {
    if (holds(*condition, number(value))) {
      matches.push_back(value);
    }
  }
  return matches;
}

struct Row {
  char const* name;
  Type type;
  std::uint32_t value;
  bool usePercent;
  std::vector<double> values;
  std::vector<double> matches;
};

TEST(TopBottomOperator, MatchesTheBestDistinctNumbers) {
  std::vector<Row> const rows = {
      {"equal numbers share a rank", Type::Top, 2, count, {5, 5, 4, 3}, {5, 5, 4}},
      {"in any order", Type::Top, 2, count, {3, 5, 4, 5}, {5, 4, 5}},
      {"bottom", Type::Bottom, 1, count, {2, 1, 1}, {1, 1}},
      {"bottom in any order", Type::Bottom, 2, count, {3, 1, 2, 1}, {1, 2, 1}},
      {"more than there are", Type::Top, 10, count, {1, 2, 3, 2}, {1, 2, 3, 2}},
      {"more than there are, bottom", Type::Bottom, 10, count, {1, 2, 3}, {1, 2, 3}},
      {"far more than there are", Type::Top, largestValue, count, {1, 2, 3}, {1, 2, 3}},
      {"none wanted", Type::Top, 0, count, {1, 2, 3}, {}},
      {"none wanted, bottom", Type::Bottom, 0, count, {1, 2, 3}, {}},
      {"infinities", Type::Top, 1, count, {infinity, 1, -infinity}, {infinity}},
      {"zeros are equal", Type::Top, 2, count, {0.0, -0.0, -1, -2}, {0.0, -0.0, -1}},
      {"10 percent of 9", Type::Top, 10, percent, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {}},
      {"10 percent of 10", Type::Top, 10, percent, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {10}},
      {"19 percent of 10", Type::Top, 19, percent, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {10}},
      {"20 percent of 10", Type::Bottom, 20, percent, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {1, 2}},
      {"of distinct numbers", Type::Top, 50, percent, {1, 1, 1, 2}, {2}},
      {"all of them", Type::Bottom, 100, percent, {3, 1, 2, 3}, {3, 1, 2, 3}},
      {"all of them, top", Type::Top, 100, percent, {3, 1, 2, 3}, {3, 1, 2, 3}},
      {"99 percent", Type::Top, 99, percent, {3, 1, 2}, {3, 2}},
      {"more than all", Type::Top, 500, percent, {3, 1, 2}, {3, 1, 2}},
      {"no percentage", Type::Top, 0, percent, {3, 1, 2}, {}},
      {"a product past 32 bits", Type::Top, largestValue, percent, {3, 1, 2}, {3, 1, 2}},
      {"one number", Type::Top, 1, count, {7}, {7}},
  };
  for (auto const& row : rows) {
    EXPECT_THAT(findMatches(Record(row.type, row.value, row.usePercent), row.values),
                ElementsAreArray(row.matches))
        << row.name;
  }
}

TEST(TopBottomOperator, NumbersOutsideTheRangesAreJudgedByTheThreshold) {
  auto const top = makeCondition(Record(Type::Top, 2, count), {1, 5, 3});
  EXPECT_TRUE(holds(*top, number(3)));
  EXPECT_TRUE(holds(*top, number(100)));
  EXPECT_TRUE(holds(*top, number(3.5)));
  EXPECT_FALSE(holds(*top, number(std::nextafter(3.0, 0.0))));
  auto const bottom = makeCondition(Record(Type::Bottom, 2, count), {1, 5, 3});
  EXPECT_TRUE(holds(*bottom, number(3)));
  EXPECT_TRUE(holds(*bottom, number(-100)));
  EXPECT_FALSE(holds(*bottom, number(std::nextafter(3.0, 4.0))));
}

std::vector<FormulaValue> const others = {empty(), text("5"), boolean(true),
                                          error(FormulaModel::FormulaErrorCode::Number)};

TEST(TopBottomOperator, HoldsForNothingButNumbers) {
  for (auto const type : {Type::Top, Type::Bottom}) {
    for (bool const usePercent : {percent, count}) {
      auto const condition = makeCondition(Record(type, 100, usePercent), {1, 2, 3});
      ASSERT_TRUE(holds(*condition, number(2)));
      for (auto const& other : others) {
        EXPECT_FALSE(holds(*condition, other)) << "value of kind " << other.which();
      }
    }
  }
}

TEST(TopBottomOperator, NeverHoldsWithoutNumbers) {
  for (int const type : {0, 1, 2}) {
    for (bool const usePercent : {percent, count}) {
      auto const condition =
          makeCondition(Record(static_cast<Type>(type), largestValue, usePercent), {});
      for (double const value : {-infinity, 0.0, infinity, nan}) {
        EXPECT_FALSE(holds(*condition, number(value))) << type << ' ' << value;
      }
    }
  }
}

/// Memory that nothing can read: a program that tries to ends.
class UnreadablePage {
public:
  UnreadablePage() : _memory(mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {}
  UnreadablePage(UnreadablePage const&) = delete;
  UnreadablePage& operator=(UnreadablePage const&) = delete;
  ~UnreadablePage() { munmap(_memory, size); }

  [[nodiscard]] void const* get() const { return _memory == MAP_FAILED ? nullptr : _memory; }

private:
  static constexpr std::size_t size = 4096;

  void* _memory;
};

TEST(TopBottomOperator, DoesNotReadTheRecordWithoutNumbers) {
  UnreadablePage const page;
  ASSERT_NE(page.get(), nullptr);
  TopBottomOperator const condition(*static_cast<Record const*>(page.get()), {});
  EXPECT_FALSE(holds(condition, number(1)));
}

TEST(TopBottomOperator, AnUnknownKindNeverHolds) {
  for (int const type : {2, 255}) {
    for (bool const usePercent : {percent, count}) {
      EXPECT_THAT(findMatches(Record(static_cast<Type>(type), 100, usePercent), {1, 2, 3, nan}),
                  IsEmpty());
    }
  }
}

TEST(TopBottomOperator, ANaNInTheCellMatchesWhereThereIsAThreshold) {
  for (auto const type : {Type::Top, Type::Bottom}) {
    EXPECT_TRUE(holds(*makeCondition(Record(type, 1, count), {1, 2}), number(nan)));
    EXPECT_FALSE(holds(*makeCondition(Record(type, 0, count), {1, 2}), number(nan)));
  }
}

TEST(TopBottomOperator, NaNsInTheRangesTakeNoRank) {
  for (std::uint32_t const value : {2U, 70U}) {  // selected, and sorted
    std::vector<double> values = {nan, 5, nan, 4, 3, nan};
    std::vector<double> expected = {5, 4};
    for (std::uint32_t i = 2; i < value; ++i) {
      values.push_back(1000 + i);
      expected.push_back(1000 + i);
    }
    auto const condition = makeCondition(Record(Type::Top, value, count), values);
    for (double const match : expected) {
      EXPECT_TRUE(holds(*condition, number(match))) << match;
    }
    EXPECT_FALSE(holds(*condition, number(3))) << value;
  }
  auto const half = makeCondition(Record(Type::Bottom, 50, percent), {nan, 2, nan, nan, 1});
  EXPECT_TRUE(holds(*half, number(1)));
  EXPECT_FALSE(holds(*half, number(2)));
}

/// True if a number that stands in the ranges is among the best, by counting the better ones.
bool isAmongBest(std::set<double> const& distinct, Record const& record, double value) {
  std::uint64_t const wanted = record.getUsePercent()
                                   ? std::uint64_t{record.getValue()} * distinct.size() / 100
                                   : record.getValue();
  std::uint64_t better = 0;
  for (double const other : distinct) {
    better += (record.getType() == Type::Top ? other > value : other < value) ? 1 : 0;
  }
  return better < wanted;
}

TEST(TopBottomOperator, MatchesWhatCountingTheBetterNumbersSays) {
  std::mt19937 random(4);
  for (int round = 0; round < 50; ++round) {
    std::uniform_int_distribution whole(-2 * round, 2 * round);
    std::vector<double> values(static_cast<std::size_t>(1 + 4 * round));
    for (double& value : values) {
      value = whole(random) * 0.5;
    }
    std::set<double> const distinct(values.begin(), values.end());
    auto const value = std::uniform_int_distribution<std::uint32_t>(0, 110)(random);
    for (auto const type : {Type::Top, Type::Bottom}) {
      for (bool const usePercent : {percent, count}) {
        Record const record(type, value, usePercent);
        auto const condition = makeCondition(record, values);
        for (double const cellNumber : values) {
          ASSERT_EQ(holds(*condition, number(cellNumber)),
                    isAmongBest(distinct, record, cellNumber))
              << "round " << round << ", value " << value << ", cell " << cellNumber;
        }
      }
    }
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
