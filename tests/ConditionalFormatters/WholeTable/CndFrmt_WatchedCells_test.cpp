#include "ConditionalFormatters/WholeTable/CndFrmt_WatchedCells.h"

#include <functional>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/TextsOfOneHash.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;

TEST(WatchedValues, AreFoundByTheirKindAndValue) {
  std::vector<FormulaValue> const values = {
      number(0.0),    number(1),     number(-1.5),
      text(""),       text("a"),     text("A"),
      boolean(false), boolean(true), error(FormulaModel::FormulaErrorCode::Value)};
  WatchedValues watched(values.size());
  for (WatchedValues::Index index = 0; index < values.size(); ++index) {
    EXPECT_EQ(watched.find(values[index]), WatchedValues::none);
    EXPECT_EQ(watched.insert(values[index]), index);
  }
  for (WatchedValues::Index index = 0; index < values.size(); ++index) {
    EXPECT_EQ(watched.find(values[index]), index);
    EXPECT_EQ(watched.insert(values[index]), index) << "no value is added twice";
  }
  EXPECT_EQ(watched.size(), values.size());
  EXPECT_EQ(watched.find(number(-0.0)), 0U);
  for (FormulaValue const& other :
       {empty(), number(std::numeric_limits<double>::quiet_NaN()), number(2), text("1"), text("b"),
        error(FormulaModel::FormulaErrorCode::Null)}) {
    EXPECT_EQ(watched.find(other), WatchedValues::none);
  }
}

/// A column of 1,000 numbers: each stands in two rows, 500 apart.
class WatchedCellsTest : public testing::Test {
protected:
  WatchedCellsTest() {
    for (unsigned long row = 0; row < 1'000; ++row) {
      table.setValue(row, 0, number(static_cast<double>(row % 500)));
    }
  }

  [[nodiscard]] std::unique_ptr<WatchedCells const> find(
      std::vector<TableRange> const& ranges, std::vector<TableRange> const& areas) const {
    return WatchedCells::find(PlainValueContextProvider(table), table, ranges, areas);
  }

  DOM::Table table;
};

TEST_F(WatchedCellsTest, AreTheCellsOfTheRangesInTheAreas) {
  auto const watched = find({{0, 0, 1'000, 1}}, {{10, 0, 12, 40}, {510, 0, 511, 1}});
  ASSERT_NE(watched, nullptr);
  EXPECT_EQ(watched->getValues().size(), 2U);
  auto const answers = watched->findRepeated({2, 1});
  EXPECT_TRUE(answers.known.contains(10, 0));
  EXPECT_TRUE(answers.known.contains(11, 0));
  EXPECT_TRUE(answers.known.contains(510, 0));
  EXPECT_FALSE(answers.known.contains(12, 0));
  EXPECT_TRUE(answers.repeated.contains(10, 0));
  EXPECT_FALSE(answers.repeated.contains(11, 0));
  EXPECT_TRUE(answers.repeated.contains(510, 0));
}

TEST_F(WatchedCellsTest, AreNoneForARequestThatIsNotSmall) {
  std::vector<TableRange> const column{{0, 0, 1'000, 1}};
  EXPECT_NE(find(column, {{0, 0, 125, 1}}), nullptr);
  EXPECT_EQ(find(column, {{0, 0, 126, 1}}), nullptr) << "an eighth of the cells";
  EXPECT_EQ(find(column, {}), nullptr) << "any cell may be asked about";
  EXPECT_EQ(find(column, {{0, 1, 10, 2}}), nullptr) << "no cell of the ranges";
}

TEST_F(WatchedCellsTest, ValuesThatCannotBeComparedAreNotWatched) {
  table.setValue(10, 0, empty());
  table.setValue(11, 0, number(std::numeric_limits<double>::quiet_NaN()));
  auto const watched = find({{0, 0, 1'000, 1}}, {{10, 0, 13, 1}});
  ASSERT_NE(watched, nullptr);
  EXPECT_EQ(watched->getValues().size(), 1U);
  EXPECT_TRUE(watched->findRepeated({1}).known.contains(12, 0));
  EXPECT_FALSE(watched->findRepeated({1}).known.contains(10, 0));
}

TEST_F(WatchedCellsTest, ManyTextsOfOneHashAreNotWatched) {
  auto const texts = makeTextsOfOneHash(6);
  ASSERT_EQ(std::hash<std::string>()(texts.front()), std::hash<std::string>()(texts.back()));
  ASSERT_NE(texts.front(), texts.back());
  for (unsigned long row = 0; row < texts.size(); ++row) {
    table.setValue(row, 0, text(texts[row]));
  }
  EXPECT_NE(find({{0, 0, 1'000, 1}}, {{0, 0, 32, 1}}), nullptr);
  EXPECT_EQ(find({{0, 0, 1'000, 1}}, {{0, 0, 33, 1}}), nullptr);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
