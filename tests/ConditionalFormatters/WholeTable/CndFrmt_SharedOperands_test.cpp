#include "ConditionalFormatters/WholeTable/CndFrmt_SharedOperands.h"

#include <chrono>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "DOM/ConditionalFormat.h"
#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using namespace DOM;

using Rank = TopBottomConditionalFormatType;

TEST(OperandNeeds, AreThoseOfTheKindOfCondition) {
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
  OperandChanges const changes = shared.valuesChanged(table, areas);
  EXPECT_EQ(changes.touched, (FormatIndices{0, 2}));
  EXPECT_EQ(changes.moved, changes.touched);
  EXPECT_TRUE(changes.cells.empty());
  EXPECT_EQ(shared.find(0)->getMean({}).mean.get(), 3);
  EXPECT_EQ(shared.find(1)->getMean({}).mean.get(), 1) << "its cells were not told";
}

TEST(SharedOperands, AnswerFormulasFromTheOperandsOfFormatsWithTheSameRange) {
  Table table;
  Table other;
  for (unsigned long row = 0; row < 100; ++row) {
    table.setValue(row, 0, number(static_cast<double>(row)));
    other.setValue(row, 0, number(1));
  }
  PlainValueContextProvider const provider(table);
  ConditionalFormat const average(
      {}, AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above), UUID());
  TableRange const column{0, 0, 100, 1};
  ConditionalFormatRefs const formatRefs{{{column}, average}};
  SharedOperands shared(provider, table, formatRefs);
  Formulas::AreaAspects const summary{.summary = true};
  std::vector<FormulaArea> const areas{
      {&table, column, summary},
      {&table, column, {.order = true}},
      {&other, column, summary},
      {&table, {0, 0, 8, 8}, summary},
  };
  shared.addAreas(areas);
  auto const find = [&](Table const& of, TableRange const& range,
                        Formulas::AreaAspect aspect = Formulas::AreaAspect::Summary) {
    return shared.getAreas().find(of, range, aspect);
  };
  EXPECT_EQ(find(table, column), nullptr) << "not prepared yet";
  while (shared.prepareSome(std::chrono::milliseconds(1))) {
  }
  ASSERT_NE(find(table, column), nullptr);
  EXPECT_EQ(find(table, column)->getSummary().sum, 4950);
  EXPECT_EQ(find(table, column, Formulas::AreaAspect::Order), find(table, column));
  EXPECT_EQ(find(table, column, Formulas::AreaAspect::Classes), nullptr);
  EXPECT_EQ(find(table, {0, 0, 99, 1}), nullptr);
  EXPECT_EQ(find(table, {0, 0, 8, 8}), nullptr) << "too small to be worth it";
  ASSERT_NE(find(other, column), nullptr);
  EXPECT_EQ(shared.find(0)->findFollowed()->getAnswers(), find(table, column)) << "one for both";

  std::vector<TableRange> const changed{{3, 0, 4, 1}};
  other.setValue(3, 0, number(5));
  EXPECT_TRUE(shared.valuesChanged(other, changed).touched.empty());
  EXPECT_EQ(find(other, column)->getSummary().sum, 104);
  EXPECT_EQ(find(table, column)->getSummary().sum, 4950);
  table.setValue(3, 0, number(103));
  EXPECT_EQ(shared.valuesChanged(table, changed).touched, (FormatIndices{0}));
  EXPECT_EQ(find(table, column)->getSummary().sum, 5050);
  EXPECT_EQ(find(other, column)->getSummary().sum, 104);
}

/// Throws for as long as it is told to.
class SwitchedProvider final : public ForwardingValueContextProvider {
public:
  explicit SwitchedProvider(Table const& table)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)) {}

  [[nodiscard]] FormulaValue getCellValue(CellInfo const& cellInfo) const override {
    if (isFailing) {
      throw std::runtime_error("no value");
    }
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }

  bool isFailing = false;
};

/// Two columns of the numbers 0 to 99, of which the first has formats of all kinds.
class SharedOperandsThatFollow : public testing::Test {
protected:
  SharedOperandsThatFollow() {
    for (unsigned long row = 0; row < 100; ++row) {
      table.setValue(row, 0, number(static_cast<double>(row)));
      table.setValue(row, 5, number(static_cast<double>(row)));
    }
    while (shared.prepareSome(std::chrono::milliseconds(1))) {
    }
  }

  OperandChanges change(unsigned long row, unsigned long inColumn, double value) {
    table.setValue(row, inColumn, number(value));
    std::vector<TableRange> const areas{{row, inColumn, row + 1, inColumn + 1}};
    return shared.valuesChanged(table, areas);
  }

  Table table;
  SwitchedProvider provider{table};
  ConditionalFormat const average{
      {}, AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above), UUID()};
  ConditionalFormat const top{
      {},
      TopBottomConditionalFormatOperator(TopBottomConditionalFormatType::Top, 2, false),
      UUID()};
  ConditionalFormat const unique{
      {}, UniquenessConditionalFormatOperator{UniquenessType::Unique}, UUID()};
  std::vector<TableRange> const column{{0, 0, 100, 1}};
  std::vector<TableRange> const other{{0, 5, 100, 6}};
  ConditionalFormatRefs const formatRefs{
      {column, average}, {column, top}, {column, unique}, {other, average}};
  SharedOperands shared{provider, table, formatRefs};
};

TEST_F(SharedOperandsThatFollow, TellWhichFormatsAndCellsAnEditReaches) {
  auto changes = change(7, 0, 50);
  EXPECT_EQ(changes.touched, (FormatIndices{0, 1, 2}));
  EXPECT_TRUE(changes.moved.empty());
  ASSERT_EQ(changes.shifted.size(), 1U) << "the second largest number is the same";
  EXPECT_EQ(changes.shifted.front().format, 0U);
  EXPECT_EQ(changes.shifted.front().least, 49.5);
  EXPECT_EQ(changes.shifted.front().most, 49.93);
  EXPECT_EQ(changes.cells, (std::vector<CellIndex>{{RowIndex(7), ColumnIndex(0)},
                                                   {RowIndex(50), ColumnIndex(0)}}));
  changes = change(8, 0, 1'000);
  ASSERT_EQ(changes.shifted.size(), 2U);
  EXPECT_EQ(changes.shifted.back().format, 1U);
  EXPECT_EQ(changes.shifted.back().least, 98);
  EXPECT_EQ(changes.shifted.back().most, 99);
  EXPECT_TRUE(changes.cells.empty());
  changes = change(9, 0, 9);
  EXPECT_EQ(changes.touched, (FormatIndices{0, 1, 2}));
  EXPECT_TRUE(changes.shifted.empty()) << "the value is what it was";
  EXPECT_EQ(shared.find(0)
                ->getThreshold({TopBottomConditionalFormatType::Top, 2, false}, {})
                .threshold->get(),
            99);
  EXPECT_TRUE(shared.find(0)->isRepeated({RowIndex(50), ColumnIndex(0)}, {}));
}

TEST_F(SharedOperandsThatFollow, MayMeanAnythingWhereAReferenceAppearsOrIsNoNumber) {
  EXPECT_EQ(change(7, 0, nan).moved, (FormatIndices{0})) << "the mean is no number any more";
  EXPECT_TRUE(change(8, 0, nan).moved.empty()) << "as before";
  EXPECT_TRUE(change(7, 0, 7).moved.empty());
  EXPECT_EQ(change(8, 0, 8).moved, (FormatIndices{0}));
}

TEST_F(SharedOperandsThatFollow, ReadTheChangedCellsAlone) {
  static_cast<void>(change(7, 0, 107));
  provider.isFailing = true;
  EXPECT_EQ(shared.find(0)->getMean({}).mean.get(), 50.5);
}

TEST_F(SharedOperandsThatFollow, AreForgottenWhenTheHostFails) {
  provider.isFailing = true;
  EXPECT_THROW(static_cast<void>(change(7, 0, 107)), std::runtime_error);
  EXPECT_THROW(static_cast<void>(shared.find(0)->getMean({})), std::runtime_error);
  EXPECT_THROW(shared.prepareSome(std::chrono::seconds(1)), std::runtime_error);
  provider.isFailing = false;
  EXPECT_EQ(shared.find(0)->getMean({}).mean.get(), 50.5);
  EXPECT_EQ(shared.find(3)->getMean({}).mean.get(), 49.5);
  EXPECT_FALSE(shared.prepareSome(std::chrono::hours(1)));
  static_cast<void>(change(7, 0, 207));
  EXPECT_EQ(shared.find(0)->getMean({}).mean.get(), 51.5);
}

TEST_F(SharedOperandsThatFollow, FollowFewEnoughValues) {
  for (auto const& [most, expected] : {std::pair(99UL, 0), {100UL, 1}, {199UL, 1}, {200UL, 2}}) {
    SharedOperands limited(provider, table, formatRefs, most);
    while (limited.prepareSome(std::chrono::milliseconds(1))) {
    }
    int followed = 0;
    for (FormatIndex const format : {0U, 3U}) {
      followed += limited.find(format)->findFollowed() != nullptr ? 1 : 0;
      EXPECT_EQ(limited.find(format)->getMean({}).mean.get(), 49.5);
    }
    EXPECT_EQ(followed, expected) << most;
  }
}

TEST_F(SharedOperandsThatFollow, AreMadeAgainAfterAnEditOfMostCells) {
  table.setValue(0, 0, number(100));
  std::vector<TableRange> const everything{{0, 0, 1'048'576, 16'384}};
  // So many positions that reading the cells again is not worth it.
  std::vector<TableRange> const areas(100, everything.front());
  auto const changes = shared.valuesChanged(table, areas);
  EXPECT_EQ(changes.moved, (FormatIndices{0, 1, 2, 3}));
  EXPECT_EQ(shared.find(0)->getMean({}).mean.get(), 50.5);
  EXPECT_FALSE(shared.prepareSome(std::chrono::hours(1)));
  EXPECT_EQ(shared.find(0)->getMean({}).mean.get(), 50.5);
}

TEST_F(SharedOperandsThatFollow, AreTakenOverByFormatsWithTheSameRanges) {
  ConditionalFormat const bottom{
      {},
      TopBottomConditionalFormatOperator(TopBottomConditionalFormatType::Bottom, 2, false),
      UUID()};
  std::vector<TableRange> const shorter{{0, 5, 99, 6}};
  ConditionalFormatRefs const laterRefs{
      {other, bottom}, {column, bottom}, {column, unique}, {shorter, average}};
  SharedOperands later(provider, table, laterRefs);
  later.takeOver(shared, DocumentMoves());
  ASSERT_NE(later.find(1)->findFollowed(), nullptr) << "it ranks numbers from both ends";
  EXPECT_EQ(later.find(0)->findFollowed(), nullptr) << "no ranking was kept for an average";
  EXPECT_EQ(later.find(3)->findFollowed(), nullptr) << "other ranges";
  provider.isFailing = true;
  EXPECT_EQ(later.find(1)
                ->getThreshold({TopBottomConditionalFormatType::Bottom, 2, false}, {})
                .threshold->get(),
            1);
  EXPECT_FALSE(later.find(1)->isRepeated({RowIndex(7), ColumnIndex(0)}, {}));
}

TEST_F(SharedOperandsThatFollow, AreTakenOverWhereTheRangesMovedWithTheLines) {
  using Kind = AxisEdit::Kind;
  struct Case {
    char const* name;
    bool isOfRows;
    AxisEdit edit;
    TableRange range;  ///< after it
    double mean;
  };
  Case const cases[] = {
      {"rows inserted inside", true, {Kind::Insert, 3, 2}, {0, 0, 102, 1}, 49.5},
      {"rows inserted before", true, {Kind::Insert, 0, 2}, {2, 0, 102, 1}, 49.5},
      {"a row deleted at the end", true, {Kind::Delete, 99, 1}, {0, 0, 99, 1}, 49},
      {"rows moved inside", true, {Kind::Move, 3, 2, 9}, {0, 0, 100, 1}, 49.5},
      {"a row moved out", true, {Kind::Move, 50, 1, 120}, {0, 0, 99, 1}, (4950 - 50) / 99.0},
      {"a row inserted, in a range as it was", true, {Kind::Insert, 3, 1}, {0, 0, 100, 1}, 49},
      {"columns inserted before", false, {Kind::Insert, 0, 2}, {0, 2, 100, 3}, 49.5},
      {"columns inserted behind", false, {Kind::Insert, 1, 2}, {0, 0, 100, 1}, 49.5},
      {"the column moved", false, {Kind::Move, 0, 1, 7}, {0, 6, 100, 7}, 49.5},
      {"another column moved before", false, {Kind::Move, 4, 2, 0}, {0, 2, 100, 3}, 49.5},
  };
  for (Case const& each : cases) {
    SCOPED_TRACE(each.name);
    Table edited;
    for (unsigned long row = 0; row < 100; ++row) {
      edited.setValue(row, 0, number(static_cast<double>(row)));
    }
    SwitchedProvider ofEdited(edited);
    ConditionalFormatRefs const before{{column, average}};
    SharedOperands followed(ofEdited, edited, before);
    EXPECT_FALSE(followed.prepareSome(std::chrono::hours(1)));
    switch (auto const& [kind, first, count, target] = each.edit; kind) {
      case Kind::Insert:
        each.isOfRows ? edited.insertRows(first, count) : edited.insertColumns(first, count);
        break;
      case Kind::Delete:
        edited.deleteRows(first, count);
        break;
      default:
        each.isOfRows ? edited.moveRows(first, count, target)
                      : edited.moveColumns(first, count, target);
    }
    DocumentMoves moves;
    (each.isOfRows ? moves.getOrCreate(edited).rows : moves.getOrCreate(edited).columns)
        .add(each.edit);
    std::vector<TableRange> const moved{each.range};
    ConditionalFormatRefs const after{{moved, average}};
    SharedOperands later(ofEdited, edited, after);
    later.takeOver(followed, moves);
    ASSERT_NE(later.find(0)->findFollowed(), nullptr);
    EXPECT_EQ(later.find(0)->findFollowed()->getMean().mean.get(), each.mean);
  }
}

/// A formula of another table's area, which a host writes anew when the area moves.
TEST_F(SharedOperandsThatFollow, OfAreasInOtherTablesAreTakenOverWhereTheyMoved) {
  Table elsewhere;
  for (unsigned long row = 0; row < 100; ++row) {
    elsewhere.setValue(row, 0, number(1));
  }
  std::vector<FormulaArea> const before{{&elsewhere, {0, 0, 100, 1}, {.summary = true}}};
  std::vector<FormulaArea> const after{{&elsewhere, {0, 1, 100, 2}, {.summary = true}}};
  ConditionalFormatRefs const noFormats;
  SharedOperands followed(provider, table, noFormats);
  followed.addAreas(before);
  EXPECT_FALSE(followed.prepareSome(std::chrono::hours(1)));
  elsewhere.insertColumns(0, 1);
  DocumentMoves moves;
  moves.getOrCreate(elsewhere).columns.add({AxisEdit::Kind::Insert, 0, 1});
  SharedOperands later(provider, table, noFormats);
  later.addAreas(after);
  later.takeOver(followed, moves);
  auto const* const answers =
      later.getAreas().find(elsewhere, {0, 1, 100, 2}, Formulas::AreaAspect::Summary);
  ASSERT_NE(answers, nullptr);
  EXPECT_EQ(answers->getSummary().sum, 100);

  // Where formulas stay as they are written, the area has other cells then, or the same.
  elsewhere.insertRows(0, 1);
  DocumentMoves rows;
  rows.getOrCreate(elsewhere).rows.add({AxisEdit::Kind::Insert, 0, 1});
  later.linesChanged(rows);
  EXPECT_EQ(answers->getSummary().sum, 99);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
