#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "ConditionalFormatters/CalculatorTest.h"

// Which formats decide about a cell, and what they contribute.
namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAre;
using testing::IsEmpty;

class CellResolutionTest : public CalculatorTest {
protected:
  CellResolutionTest() { host.table.setValue(0, 0, number(1)); }

  static constexpr TableRange firstCell{0, 0, 1, 1};
  static constexpr TableRange elsewhere{5, 5, 6, 6};
};

TEST_F(CellResolutionTest, ATableWithoutFormatsContributesNothing) {
  EXPECT_EQ(resolve(0, 0), nullptr);
  EXPECT_THAT(host.journal.getEntries(), IsEmpty());
}

TEST_F(CellResolutionTest, ACellInNoRangeCostsNothing) {
  addFormat(host.table, {elsewhere}, holdsAlways(), addFont(1, true));
  addFormat(host.table, {}, holdsAlways(), addFont(2, true));
  EXPECT_EQ(resolve(0, 0), nullptr);
  EXPECT_THAT(host.journal.getEntries(), IsEmpty());
}

TEST_F(CellResolutionTest, RangesEndBeforeTheirEndRowAndEndColumn) {
  addFormat(host.table, {{2, 3, 4, 6}, {10, 10, 11, 11}}, holdsAlways(), addFont(1, true));
  struct Case {
    char const* name;
    unsigned long row;
    unsigned long column;
    bool held;
  };
  for (Case const& c :
       {Case{"top left corner", 2, 3, true}, Case{"bottom right corner", 3, 5, true},
        Case{"end row", 4, 3, false}, Case{"end column", 2, 6, false}, Case{"above", 1, 3, false},
        Case{"left", 2, 2, false}, Case{"second range", 10, 10, true},
        Case{"after the second range", 11, 10, false}}) {
    EXPECT_EQ(resolve(c.row, c.column) != nullptr, c.held) << c.name;
  }
}

TEST_F(CellResolutionTest, AnOperatorIsMadeBeforeTheValueIsAskedForAndForEachFormatAnew) {
  addFormat(host.table, {firstCell}, holdsNever(), addFont(1, true));
  addFormat(host.table, {elsewhere}, holdsAlways(), addFont(2, true));
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(3, true));
  EXPECT_NE(resolve(0, 0), nullptr);
  EXPECT_EQ(host.journal.getEntries(), judgementsOf("0,0", 2));
}

TEST_F(CellResolutionTest, ACellOfSeveralRangesOfOneFormatIsJudgedOnce) {
  addFormat(host.table, {firstCell, {0, 0, 5, 5}, firstCell}, holdsAlways(), addFont(1, true));
  EXPECT_NE(resolve(0, 0), nullptr);
  EXPECT_EQ(host.journal.getEntries(), judgementsOf("0,0", 1));
}

TEST_F(CellResolutionTest, TheConditionGetsTheProvidersValueAndTheCellsPosition) {
  Expr const argument;
  addFormat(host.table, {{2, 1, 9, 9}},
            DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::Equal, argument),
            addFont(1, true));
  provider->answerBy([](DOM::CellInfo const&) { return text("given"); });
  host.engine.answer(text("given"));
  EXPECT_NE(resolve(5, 3), nullptr);
  EXPECT_EQ(host.engine.getShiftCalls().front().columnOffset, 2);
  EXPECT_EQ(host.engine.getShiftCalls().front().rowOffset, 3);
  host.engine.answer(text("other"));
  EXPECT_EQ(resolve(5, 3), nullptr);
}

TEST_F(CellResolutionTest, RangeConditionsJudgeByAllCellsOfTheirRanges) {
  host.table.setValue(1, 0, number(1));
  host.table.setValue(2, 0, number(2));
  addFormat(host.table, {{0, 0, 3, 1}},
            DOM::UniquenessConditionalFormatOperator{DOM::UniquenessType::Duplicate},
            addFont(1, true));
  EXPECT_NE(resolve(0, 0), nullptr);
  EXPECT_EQ(resolve(2, 0), nullptr);
  // Three cells for the collection and the cell itself, and that for each of the two cells.
  EXPECT_EQ(host.journal.count("getCellValue"), 8U);
}

TEST_F(CellResolutionTest, TheFirstFormatThatSetsAPropertyDecidesIt) {
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(2, false, 8.0));
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(3, false, 20.0));
  auto const style = resolve(0, 0);
  ASSERT_NE(style, nullptr);
  EXPECT_EQ((*style)->getRunProps()->bold, true);
  EXPECT_EQ((*style)->getRunProps()->fontSize, 8.0);
}

TEST_F(CellResolutionTest, LaterFormatsFillInGroupsThatEarlierOnesLeaveUnset) {
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  addStyle(host.styles, makeUUID(2))
      .setCellProps(makeProps<DOM::CellProps>([](DOM::CellProps& props) { props.locked = true; }));
  addFormat(host.table, {firstCell}, holdsAlways(), makeUUID(2));
  auto const near = std::make_shared<DOM::CellFormat const>(DOM::CellFormat{"0%"});
  addStyle(host.styles, makeUUID(3)).setCellFormat(near);
  addFormat(host.table, {firstCell}, holdsAlways(), makeUUID(3));
  addStyle(host.styles, makeUUID(4))
      .setCellFormat(std::make_shared<DOM::CellFormat const>(DOM::CellFormat{"@"}));
  addFormat(host.table, {firstCell}, holdsAlways(), makeUUID(4));
  auto const style = resolve(0, 0);
  ASSERT_NE(style, nullptr);
  EXPECT_EQ((*style)->getRunProps()->bold, true);
  EXPECT_EQ((*style)->getCellProps()->locked, true);
  EXPECT_EQ((*style)->getParaProps(), nullptr);
  EXPECT_EQ((*style)->getCellFormat(), near);
}

TEST_F(CellResolutionTest, AFormatContributesWhatItsStyleInherits) {
  auto const grandparent = addFont(1, false, 8.0);
  auto const parent = addFont(2, true, std::nullopt, grandparent);
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(3, std::nullopt, std::nullopt, parent));
  // What the first format inherits goes before what the second one sets itself.
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(4, false, 20.0));
  auto const style = resolve(0, 0);
  ASSERT_NE(style, nullptr);
  EXPECT_EQ((*style)->getRunProps()->bold, true);
  EXPECT_EQ((*style)->getRunProps()->fontSize, 8.0);
  EXPECT_TRUE((*style)->getParentUUID().isEmpty());
  EXPECT_TRUE((*style)->getNoteUUID().isEmpty());
}

TEST_F(CellResolutionTest, WhoeverHoldsAndStopsEndsTheWalk) {
  addFormat(host.table, {elsewhere}, holdsAlways(), addFont(1, true, 1.0), true);
  addFormat(host.table, {firstCell}, holdsNever(), addFont(2, true, 2.0), true);
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(3, true), false);
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(4, false), true);
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(5, false, 5.0));
  auto const style = resolve(0, 0);
  ASSERT_NE(style, nullptr);
  EXPECT_EQ((*style)->getRunProps()->bold, true);
  EXPECT_EQ((*style)->getRunProps()->fontSize, std::nullopt);
  EXPECT_EQ(host.journal.getEntries(), judgementsOf("0,0", 3));
}

TEST_F(CellResolutionTest, AFormatWithoutAnExistingStyleHoldsAndSetsNothing) {
  addFormat(host.table, {firstCell}, holdsAlways(), makeUUID(77));
  auto const nothing = resolve(0, 0);
  ASSERT_NE(nothing, nullptr);
  EXPECT_TRUE(nothing->get() == DOM::CellStyle());
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  calculator->clearTablesRangesCache();
  EXPECT_EQ((*resolve(0, 0))->getRunProps()->bold, true);

  host.table.setConditionalFormats({});
  addFormat(host.table, {firstCell}, holdsAlways(), makeUUID(77), true);
  addFormat(host.table, {firstCell}, holdsAlways(), makeUUID(1));
  calculator->clearTablesRangesCache();
  EXPECT_EQ(resolve(0, 0), nothing);
}

TEST_F(CellResolutionTest, EqualResultsAreOneObject) {
  host.table.setValue(3, 3, number(1));
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  addFormat(host.table, {{3, 3, 4, 4}}, holdsAlways(), addFont(2, true));
  auto const style = resolve(0, 0);
  EXPECT_EQ(resolve(0, 0), style);
  EXPECT_EQ(resolve(3, 3), style);
}

TEST_F(CellResolutionTest, ResultsOutliveTheCalculator) {
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  auto const style = getStyle(0, 0);
  calculator.reset();
  EXPECT_EQ((*style)->getRunProps()->bold, true);
}

TEST_F(CellResolutionTest, StylesOfTheDocumentAreNotChangedByMerging) {
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(2, false, 8.0));
  (void)resolve(0, 0);
  auto const& styles = host.styles.getTableStyles();
  EXPECT_EQ(styles.at(makeUUID(1)).getRunProps()->fontSize, std::nullopt);
  EXPECT_EQ(styles.at(makeUUID(2)).getRunProps()->bold, false);
}

TEST_F(CellResolutionTest, ResolvingRemembersNoCell) {
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  (void)resolve(0, 0);
  (void)resolve(0, 0);
  EXPECT_EQ(host.journal.count("getCellValue"), 2U);
  (void)getStyle(0, 0);
  EXPECT_EQ(host.journal.count("getCellValue"), 3U);
}

TEST_F(CellResolutionTest, ExceptionsReachTheCallerAsTheyAre) {
  addFormat(
      host.table, {firstCell},
      DOM::NullaryConditionalFormatOperator(static_cast<DOM::NullaryConditionalFormatType>(14)),
      addFont(1, true));
  EXPECT_THROW((void)resolve(0, 0), std::bad_function_call);
  provider->answerBy(
      [](DOM::CellInfo const&) -> FormulaValue { throw std::out_of_range("no value"); });
  EXPECT_THROW((void)resolve(0, 0), std::out_of_range);
  host.contextProvider.onGetLocaleContext([] { throw std::domain_error("no locale"); });
  EXPECT_THROW((void)resolve(0, 0), std::domain_error);
}

TEST_F(CellResolutionTest, AnExceptionAfterAFormatThatHoldsLeavesNothingBehind) {
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(2, false, 8.0));
  int calls = 0;
  provider->answerBy([&](DOM::CellInfo const&) {
    if (++calls == 2) {
      throw std::out_of_range("no value");
    }
    return number(1);
  });
  EXPECT_THROW((void)resolve(0, 0), std::out_of_range);
  EXPECT_EQ((*resolve(0, 0))->getRunProps()->fontSize, 8.0);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
