#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <type_traits>

#include "ConditionalFormatters/CalculatorTest.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char const* nullPointerMessage =
    "^/code/Utils/Public/Ptr/PtrUtils:254: assertion failed: \"plainPtr\"\n$";

static_assert(!std::is_copy_constructible_v<ConditionalFormattingPropsCalculator>);
static_assert(!std::is_polymorphic_v<ConditionalFormattingPropsCalculator>);
static_assert(std::is_convertible_v<std::unique_ptr<ValueContextProvider>,
                                    ConditionalFormattingPropsCalculator>);

class CalculatorFrameTest : public CalculatorTest {};
using CalculatorFrameDeathTest = CalculatorFrameTest;
class ConditionalFormatRefsTest : public CalculatorTest {};
using ConditionalFormatRefsDeathTest = ConditionalFormatRefsTest;

TEST_F(CalculatorFrameTest, OwnsItsProvider) {
  std::unique_ptr<ValueContextProvider> owned = host.makeProvider();
  auto other = std::make_unique<ConditionalFormattingPropsCalculator>(std::move(owned));
  EXPECT_EQ(owned, nullptr);
  EXPECT_THAT(host.journal.getEntries(), IsEmpty());
  other.reset();
  EXPECT_THAT(host.journal.getEntries(), ElementsAre("~ValueContextProvider"));
}

TEST_F(CalculatorFrameTest, ClearingEmptyCachesDoesNothing) {
  calculator->clearCellStylesCache();
  calculator->clearTablesRangesCache();
  calculator->clearCellStylesCache();
  EXPECT_THAT(host.journal.getEntries(), IsEmpty());
}

TEST_F(CalculatorFrameTest, AProviderMayBeMissingUntilItIsNeeded) {
  ConditionalFormattingPropsCalculator const without(nullptr);
  without.clearCellStylesCache();
  EXPECT_THAT(without.getConditionalFormatRefs(host.table), IsEmpty());
  EXPECT_EQ(without.getConditionalFormatCellStyle(host.styles, host.table.getCellInfo(0, 0)),
            nullptr);
}

TEST_F(CalculatorFrameDeathTest, ResolvingWithoutAProviderIsFatal) {
  ConditionalFormattingPropsCalculator const without(nullptr);
  auto const cell = host.table.getCellInfo(0, 0);
  // Before any format is looked at, and so for a table without formats, too.
  EXPECT_DEATH((void)without.resolve(host.styles, cell), nullPointerMessage);
  addFormat(host.table, {{5, 5, 6, 6}}, holdsAlways());
  EXPECT_DEATH((void)without.resolve(host.styles, cell), nullPointerMessage);
  EXPECT_DEATH((void)without.getConditionalFormatCellStyle(host.styles, cell), nullPointerMessage);
}

TEST_F(CalculatorFrameTest, ClearingTheCellStylesLeavesTheFormats) {
  auto const style = addFont(1, true);
  host.table.setValue(0, 0, number(1));
  auto const& format = addFormat(host.table, {{0, 0, 1, 1}}, holdsAlways(), style);
  EXPECT_NE(getStyle(0, 0), nullptr);
  ConditionalFormatRefs const& refs = calculator->getConditionalFormatRefs(host.table);
  calculator->clearCellStylesCache();
  EXPECT_EQ(&calculator->getConditionalFormatRefs(host.table), &refs);
  EXPECT_THAT(refs, SizeIs(1));
  EXPECT_EQ(&refs.front().second.get(), &format);
}

TEST_F(CalculatorFrameTest, ClearingTheFormatsLeavesTheCellStyles) {
  auto const style = addFont(1, true);
  host.table.setValue(0, 0, number(1));
  addFormat(host.table, {{5, 5, 6, 6}}, holdsAlways(), style);
  EXPECT_EQ(getStyle(0, 0), nullptr);
  calculator->clearTablesRangesCache();
  addFormat(host.table, {{0, 0, 1, 1}}, holdsAlways(), style);
  EXPECT_EQ(getStyle(0, 0), nullptr);
  EXPECT_NE(resolve(0, 0), nullptr);
  calculator->clearCellStylesCache();
  EXPECT_NE(getStyle(0, 0), nullptr);
}

TEST_F(ConditionalFormatRefsTest, AnEmptyListIsKeptLikeAnyOther) {
  EXPECT_THAT(calculator->getConditionalFormatRefs(host.table), IsEmpty());
  addFormat(host.table, {{0, 0, 1, 1}}, holdsAlways());
  EXPECT_THAT(calculator->getConditionalFormatRefs(host.table), IsEmpty());
  calculator->clearTablesRangesCache();
  EXPECT_THAT(calculator->getConditionalFormatRefs(host.table), SizeIs(1));
}

TEST_F(ConditionalFormatRefsTest, FormatsStandInTheTablesOrderWithTheirRangesAsTheyAre) {
  auto const& first =
      addFormat(host.table, {{5, 5, 9, 6}, {0, 0, 2, 2}, {1, 1, 3, 3}}, holdsAlways());
  auto const& second = addFormat(host.table, {}, holdsNever());
  auto const& third = addFormat(host.table, {{0, 0, 1, 1}, {0, 0, 1, 1}}, holdsAlways());
  ConditionalFormatRefs const& refs = calculator->getConditionalFormatRefs(host.table);
  ASSERT_THAT(refs, SizeIs(3));
  EXPECT_EQ(&refs[0].second.get(), &first);
  EXPECT_EQ(&refs[1].second.get(), &second);
  EXPECT_EQ(&refs[2].second.get(), &third);
  EXPECT_THAT(refs[0].first,
              ElementsAre(TableRange{5, 5, 9, 6}, TableRange{0, 0, 2, 2}, TableRange{1, 1, 3, 3}));
  EXPECT_THAT(refs[1].first, IsEmpty());
  EXPECT_THAT(refs[2].first, ElementsAre(TableRange{0, 0, 1, 1}, TableRange{0, 0, 1, 1}));
}

TEST_F(ConditionalFormatRefsTest, AFormatWhoseRangesAreGoneKeepsItsPlace) {
  addFormat(host.table, {{0, 0, 2, 2}}, holdsAlways());
  addFormat(host.table, {{5, 0, 7, 2}}, holdsAlways());
  addFormat(host.table, {{8, 0, 9, 2}}, holdsAlways());
  host.table.deleteRows(5, 2);
  ConditionalFormatRefs const& refs = calculator->getConditionalFormatRefs(host.table);
  ASSERT_THAT(refs, SizeIs(3));
  EXPECT_THAT(refs[0].first, ElementsAre(TableRange{0, 0, 2, 2}));
  EXPECT_THAT(refs[1].first, IsEmpty());
  EXPECT_THAT(refs[2].first, ElementsAre(TableRange{6, 0, 7, 2}));
}

TEST_F(ConditionalFormatRefsTest, TheListIsMadeOnce) {
  addFormat(host.table, {{0, 0, 2, 2}}, holdsAlways());
  ConditionalFormatRefs const& refs = calculator->getConditionalFormatRefs(host.table);
  addFormat(host.table, {{0, 0, 2, 2}}, holdsAlways());
  host.table.insertRows(0, 3);
  EXPECT_EQ(&calculator->getConditionalFormatRefs(host.table), &refs);
  EXPECT_THAT(refs, SizeIs(1));
  EXPECT_THAT(refs[0].first, ElementsAre(TableRange{0, 0, 2, 2}));
  calculator->clearTablesRangesCache();
  ConditionalFormatRefs const& renewed = calculator->getConditionalFormatRefs(host.table);
  ASSERT_THAT(renewed, SizeIs(2));
  EXPECT_THAT(renewed[0].first, ElementsAre(TableRange{3, 0, 5, 2}));
}

TEST_F(ConditionalFormatRefsTest, EachTableHasItsOwnListAlsoAfterAnotherTableDied) {
  auto dying = std::make_optional<DOM::Table>();
  addFormat(*dying, {{0, 0, 1, 1}}, holdsAlways());
  addFormat(*dying, {{0, 0, 1, 1}}, holdsAlways());
  addFormat(host.table, {{0, 0, 1, 1}}, holdsAlways());
  EXPECT_THAT(calculator->getConditionalFormatRefs(*dying), SizeIs(2));
  EXPECT_THAT(calculator->getConditionalFormatRefs(host.table), SizeIs(1));
  // The new table lies where the old one lay, and is another one all the same.
  dying.reset();
  dying.emplace();
  EXPECT_THAT(calculator->getConditionalFormatRefs(*dying), IsEmpty());
  EXPECT_THAT(calculator->getConditionalFormatRefs(host.table), SizeIs(1));
}

TEST_F(ConditionalFormatRefsTest, AskNothingOfTheProvider) {
  addFormat(host.table, {{0, 0, 1, 1}}, holdsAlways());
  (void)calculator->getConditionalFormatRefs(host.table);
  EXPECT_THAT(host.journal.getEntries(), IsEmpty());
}

TEST_F(ConditionalFormatRefsDeathTest, ANullAmongTheFormatsIsFatal) {
  DOM::Table::LiveConditionalFormats formats;
  formats.push_back(nullptr);
  host.table.setConditionalFormats(std::move(formats));
  auto const cell = host.table.getCellInfo(0, 0);
  EXPECT_DEATH((void)calculator->getConditionalFormatRefs(host.table), nullPointerMessage);
  EXPECT_DEATH((void)calculator->resolve(host.styles, cell), nullPointerMessage);
  EXPECT_DEATH((void)calculator->getConditionalFormatCellStyle(host.styles, cell),
               nullPointerMessage);
  // Also behind a format that is there.
  host.table.setConditionalFormats({});
  addFormat(host.table, {{0, 0, 1, 1}}, holdsAlways());
  host.table.addConditionalFormat(nullptr);
  EXPECT_DEATH((void)calculator->getConditionalFormatRefs(host.table), nullPointerMessage);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
