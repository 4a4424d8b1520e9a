#include "tool/Input/Selection.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DOM/A1Notation.h"
#include "support/RuledDocument.h"
#include "tool/Input/Errors.h"

namespace Zorv::Tool {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SelectionTest : public testing::Test {
protected:
  Selection select(std::vector<std::string> sheets, std::vector<std::string> const& ranges) {
    _ruled.options.sheets = std::move(sheets);
    _ruled.options.ranges.clear();
    for (auto const& range : ranges) {
      _ruled.options.ranges.push_back(*parseSheetRange(range));
    }
    return _ruled.select();
  }

  /// The addresses of the selected ranges of a sheet.
  static std::string rangesOf(Selection const& selection, std::size_t sheet) {
    return DOM::A1Notation::toAddress(selection.getRanges(sheet));
  }

  TestSupport::RuledDocument _ruled{3};
};

TEST_F(SelectionTest, IsEverythingWithoutOptions) {
  auto const selection = select({}, {});
  EXPECT_THAT(selection.getSheets(), ElementsAre(0, 1, 2));
  EXPECT_TRUE(selection.contains(2, {RowIndex(1'000'000), ColumnIndex(16'000)}));
}

TEST_F(SelectionTest, SheetsKeepTheOrderOfTheWorkbook) {
  EXPECT_THAT(select({"sheet3", "Sheet1", "SHEET3"}, {}).getSheets(), ElementsAre(0, 2));
}

TEST_F(SelectionTest, RangesThatNameTheirSheetsSelectThem) {
  auto const selection = select({}, {"Sheet2!A1", "sheet2!B2", "Sheet3!C:C"});
  EXPECT_THAT(selection.getSheets(), ElementsAre(1, 2));
  EXPECT_EQ(rangesOf(selection, 1), "A1 B2");
  EXPECT_EQ(rangesOf(selection, 2), "C1:C1048576");
  EXPECT_THAT(selection.getRanges(0), IsEmpty());
}

TEST_F(SelectionTest, ARangeWithoutASheetIsMeantForEach) {
  auto const selection = select({}, {"Sheet2!A1", "D4"});
  EXPECT_THAT(selection.getSheets(), ElementsAre(0, 1, 2));
  EXPECT_EQ(rangesOf(selection, 0), "D4");
  EXPECT_EQ(rangesOf(selection, 1), "A1 D4");
}

TEST_F(SelectionTest, RulesAreThoseThatMeetARangeOfTheirSheet) {
  _ruled.addRule("A1:A9", 0);
  _ruled.addRule("A1:A9", 1);
  _ruled.addRule("B1:B9", 1);
  std::vector<std::size_t> numbers;
  for (auto const* rule : select({}, {"Sheet2!A5:B5", "Sheet1!B5"}).getRules()) {
    numbers.push_back(rule->number);
  }
  EXPECT_THAT(numbers, ElementsAre(1, 2));
}

TEST_F(SelectionTest, ContainsThePositionsOfItsRangesAlone) {
  auto const selection = select({}, {"Sheet2!A1:B2", "Sheet2!D4"});
  EXPECT_TRUE(selection.contains(1, {RowIndex(1), ColumnIndex(1)}));
  EXPECT_TRUE(selection.contains(1, {RowIndex(3), ColumnIndex(3)}));
  EXPECT_FALSE(selection.contains(1, {RowIndex(2), ColumnIndex(2)}));
  EXPECT_FALSE(selection.contains(0, {RowIndex(1), ColumnIndex(1)}));
}

TEST_F(SelectionTest, OfAnUnknownSheetIsAMistake) {
  EXPECT_THROW(static_cast<void>(select({"Sheet4"}, {})), ContentError);
  EXPECT_THROW(static_cast<void>(select({}, {"Sheet4!A1"})), ContentError);
}

}  // namespace
}  // namespace Zorv::Tool
