#include "ConditionalFormatters/WholeTable/CndFrmt_SharedOperands.h"

#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "DOM/ConditionalFormat.h"
#include "Formulas/ParseExpr.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using namespace DOM;

TEST(OperandNeeds, AreThoseOfTheKindOfCondition) {
  using Rank = TopBottomConditionalFormatType;
  struct Case {
    char const* name;
    ConditionalFormatOperator record;
    OperandNeeds expected;
  };
  Case const cases[] = {
      {"blank", NullaryConditionalFormatOperator(NullaryConditionalFormatType::Blanks), {}},
      {"average",
       AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above),
       {.mean = true}},
      {"top", TopBottomConditionalFormatOperator(Rank::Top, 64, false), {.largest = 64}},
      {"bottom", TopBottomConditionalFormatOperator(Rank::Bottom, 1, false), {.smallest = 1}},
      {"long top", TopBottomConditionalFormatOperator(Rank::Top, 65, false), {.ranking = true}},
      {"percent", TopBottomConditionalFormatOperator(Rank::Bottom, 1, true), {.ranking = true}},
      {"unique",
       UniquenessConditionalFormatOperator{UniquenessType::Unique},
       {.occurrences = true}},
  };
  for (Case const& each : cases) {
    EXPECT_EQ(findOperandNeeds(each.record), each.expected) << each.name;
    EXPECT_EQ(findOperandNeeds(each.record).isEmpty(), each.expected == OperandNeeds());
  }
}

TEST(OperandNeeds, AddUpToTheLongestLists) {
  OperandNeeds needs{.largest = 3, .smallest = 5};
  needs |= {.mean = true, .largest = 7, .smallest = 1};
  EXPECT_EQ(needs, (OperandNeeds{.mean = true, .largest = 7, .smallest = 5}));
}

TEST(SharedOperands, AreOneForEqualListsOfRanges) {
  Table const table;
  PlainValueContextProvider const provider(table);
  ConditionalFormat const average(
      {}, AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above), UUID());
  ConditionalFormat const unique({}, UniquenessConditionalFormatOperator{UniquenessType::Unique},
                                 UUID());
  ConditionalFormat const blank(
      {}, NullaryConditionalFormatOperator(NullaryConditionalFormatType::Blanks), UUID());
  std::vector<TableRange> const ranges{{0, 0, 9, 1}, {3, 2, 5, 4}};
  std::vector<TableRange> const turned{ranges[1], ranges[0]};
  ConditionalFormatRefs const formatRefs{
      {ranges, average}, {ranges, blank}, {turned, unique}, {ranges, unique}};
  SharedOperands const shared(provider, table, formatRefs);
  EXPECT_NE(shared.find(0), nullptr);
  EXPECT_EQ(shared.find(1), nullptr);
  EXPECT_EQ(shared.find(3), shared.find(0));
  EXPECT_NE(shared.find(2), shared.find(0)) << "the order of ranges decides on that of a sum";
  EXPECT_EQ(&shared.find(2)->getRanges(), &formatRefs[2].first);
}

TEST(SharedOperands, AreNoneWithoutFormatsThatNeedThem) {
  Table const table;
  PlainValueContextProvider const provider(table);
  ConditionalFormat const blank(
      {}, NullaryConditionalFormatOperator(NullaryConditionalFormatType::Blanks), UUID());
  ConditionalFormatRefs const formatRefs{{{{0, 0, 9, 1}}, blank}};
  EXPECT_EQ(SharedOperands(provider, table, formatRefs).find(0), nullptr);
}

TEST(SharedOperands, OfRangesWithNewValuesAreForgotten) {
  Table table;
  table.setValue(0, 0, number(1));
  table.setValue(0, 5, number(1));
  PlainValueContextProvider const provider(table);
  ConditionalFormat const average(
      {}, AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above), UUID());
  ConditionalFormatRefs const formatRefs{
      {{{0, 0, 9, 1}}, average}, {{{0, 5, 9, 6}}, average}, {{{0, 0, 9, 1}}, average}};
  SharedOperands shared(provider, table, formatRefs);
  EXPECT_EQ(shared.find(0)->getMean({}).mean.get(), 1);
  EXPECT_EQ(shared.find(1)->getMean({}).mean.get(), 1);
  table.setValue(0, 0, number(3));
  table.setValue(0, 5, number(3));
  std::vector<TableRange> const areas{{7, 7, 8, 8}, {0, 0, 1, 5}};
  OperandChanges const changes = shared.valuesChanged(areas);
  EXPECT_EQ(changes.formats, (FormatIndices{0, 2}));
  EXPECT_TRUE(changes.cells.empty());
  EXPECT_EQ(shared.find(0)->getMean({}).mean.get(), 3);
  EXPECT_EQ(shared.find(1)->getMean({}).mean.get(), 1) << "its cells were not told";
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
