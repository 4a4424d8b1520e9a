#include "ConditionalFormatters/CndFrmt_TableResolver.h"

#include <atomic>
#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <typeindex>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_FormatWalk.h"
#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/RandomTable.h"
#include "Formulas/ParseExpr.h"
#include "OfficeUtils/Clock.h"
#include "support/CountingValueContextProvider.h"
#include "support/Documents.h"
#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"
#include "support/RunningClock.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using namespace DOM;
using OfficeUtils::ScopedClock;
using Positions = TableResolver::Positions;

std::unique_ptr<ConditionalFormattingPropsCalculator> makeCalculator(Table const& table) {
  return std::make_unique<ConditionalFormattingPropsCalculator>(
      std::make_unique<PlainValueContextProvider>(table));
}

/// The answer for a cell: a style, or the type of what was thrown instead.
struct Answer {
  SharedCellStylePtr style;
  std::type_index thrown = typeid(void);

  friend bool operator==(Answer const&, Answer const&) = default;
};

Answer answerOf(std::function<SharedCellStylePtr()> const& resolve) {
  try {
    return {.style = resolve()};
  } catch (std::exception const& exception) {
    return {.style = nullptr, .thrown = typeid(exception)};
  }
}

constexpr TableRange everything{0, 0, RandomTable::rows + 3, RandomTable::columns + 3};

using Visited = std::vector<std::pair<CellIndex, SharedCellStylePtr>>;

Visited visitAll(TableResolver const& resolver, TableRange const& range, Positions positions,
                 unsigned threadCount) {
  Visited visited;
  resolver.visit(
      range, positions,
      [&](CellInfo const& cell, SharedCellStylePtr const& style) {
        visited.emplace_back(cell.getCellIndex(), style);
      },
      threadCount);
  return visited;
}

RC_GTEST_PROP(TableResolver, AnswersWhatResolveAnswersForEveryCell, ()) {
  ScopedClock const clock(noonOn21November());
  RandomTable const random({.withUnknownKinds = true});
  auto const calculator = makeCalculator(random.table);
  auto const resolver = calculator->prepare(random.styles, random.table);
  for (unsigned long row = 0; row < everything.endRow; ++row) {
    for (unsigned long column = 0; column < everything.endColumn; ++column) {
      CellInfo const cell = random.table.getCellInfo(row, column);
      auto const expected = answerOf([&] { return calculator->resolve(random.styles, cell); });
      RC_ASSERT(answerOf([&] { return resolver.resolve(cell); }) == expected);
    }
  }
}

RC_GTEST_PROP(TableResolver, VisitsTheSameStylesInOrderOnAnyNumberOfThreads, ()) {
  ScopedClock const clock(noonOn21November());
  RandomTable const random;
  auto const calculator = makeCalculator(random.table);
  auto const resolver = calculator->prepare(random.styles, random.table);
  Visited all;
  Visited existing;
  for (unsigned long row = 0; row < everything.endRow; ++row) {
    for (unsigned long column = 0; column < everything.endColumn; ++column) {
      CellInfo const cell = random.table.getCellInfo(row, column);
      all.emplace_back(cell.getCellIndex(), calculator->resolve(random.styles, cell));
      if (cell.getCell() != nullptr) {
        existing.push_back(all.back());
      }
    }
  }
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    RC_ASSERT(visitAll(resolver, everything, Positions::All, threadCount) == all);
    RC_ASSERT(visitAll(resolver, everything, Positions::Existing, threadCount) == existing);
  }
}

RC_GTEST_PROP(TableResolver, ExplainsEachStyleByTheFormatsThatHoldOnAnyNumberOfThreads, ()) {
  ScopedClock const clock(noonOn21November());
  RandomTable const random;
  auto const calculator = makeCalculator(random.table);
  auto const resolver = calculator->prepare(random.styles, random.table);
  auto const& formatRefs = calculator->getConditionalFormatRefs(random.table);
  PlainValueContextProvider const provider(random.table);
  OperatorsFactory const factory(provider, random.table);
  auto const findHolding = [&](CellInfo const& cell) {
    std::vector<std::uint32_t> holding;
    walkFormats(
        formatRefs, cell,
        [&](ConditionalFormatRef const& formatRef) { return factory.create(formatRef); },
        [&] {
          return FormulaValueData{provider.getCellValue(cell), cell.getCellIndex()};
        },
        [&](ConditionalFormatRef const& formatRef) {
          holding.push_back(static_cast<std::uint32_t>(&formatRef - formatRefs.data()));
          return stepAfter(formatRef.second);
        });
    return holding;
  };
  for (auto const positions : {Positions::All, Positions::Existing}) {
    for (unsigned const threadCount : {1U, 2U, 7U}) {
      Visited explained;
      resolver.explain(
          everything, positions,
          [&](CellInfo const& cell, SharedCellStylePtr const& style,
              std::span<std::uint32_t const> formats) {
            explained.emplace_back(cell.getCellIndex(), style);
            RC_ASSERT(std::vector(formats.begin(), formats.end()) == findHolding(cell));
          },
          threadCount);
      RC_ASSERT(explained == visitAll(resolver, everything, positions, 1));
    }
  }
}

RC_GTEST_PROP(TableResolver, RunsCoverExactlyTheStyledPositions, ()) {
  ScopedClock const clock(noonOn21November());
  RandomTable const random;
  auto const calculator = makeCalculator(random.table);
  auto const resolver = calculator->prepare(random.styles, random.table);
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    auto const runs = resolver.resolveRuns(everything, Positions::All, threadCount);
    for (unsigned long row = 0; row < everything.endRow; ++row) {
      for (unsigned long column = 0; column < everything.endColumn; ++column) {
        std::vector<SharedCellStylePtr> covering;
        for (StyleRun const& run : runs) {
          if (run.range.contains(row, column)) {
            covering.push_back(run.style);
          }
        }
        auto const style =
            calculator->resolve(random.styles, random.table.getCellInfo(row, column));
        RC_ASSERT(covering == (style ? std::vector{style} : std::vector<SharedCellStylePtr>()));
      }
    }
  }
}

/// A column of the numbers 0, 1, 2 ... with one style.
class TableResolverTest : public testing::Test {
protected:
  static constexpr unsigned long cellCount = 20'000;

  TableResolverTest() {
    addStyle(styles, makeUUID(1)).setCellProps(makeProps<CellProps>([](CellProps& props) {
      props.fillColour = Colour{255, 0, 0};
    }));
    for (unsigned long row = 0; row < cellCount; ++row) {
      table.setValue(row, 0, number(static_cast<double>(row)));
    }
  }

  void addUnary(UnaryConditionalFormatType type, std::string const& formula) {
    addFormat(table, {column}, UnaryConditionalFormatOperator(type, Formulas::parseExpr(formula)),
              makeUUID(1));
  }

  /// A format that throws for the cells from a row on: its kind is none that there is.
  void addThrowingFrom(unsigned long row) {
    addFormat(table, {{row, 0, cellCount, 1}},
              NullaryConditionalFormatOperator(static_cast<NullaryConditionalFormatType>(14)),
              makeUUID(1));
  }

  TableRange const column{0, 0, cellCount, 1};
  Table table;
  Styles styles;
};

TEST_F(TableResolverTest, RunsGrowOverRowsAndOverTheBordersBetweenThreads) {
  addUnary(UnaryConditionalFormatType::GreaterOrEqual, "100");
  auto const calculator = makeCalculator(table);
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    auto const runs =
        calculator->prepare(styles, table).resolveRuns(column, Positions::Existing, threadCount);
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs.front().range, (TableRange{100, 0, cellCount, 1}));
  }
}

/// The call is a constant by then: it does not see that the document changed, as its users promise
/// not to do. Its range is too small to be remembered in any other way.
TEST_F(TableResolverTest, ACallThatNoCellChangesIsEvaluatedOnce) {
  addUnary(UnaryConditionalFormatType::FormulaIsTrue, "A1>AVERAGE($A$1:$A$11)");
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  EXPECT_FALSE(resolver.resolve(table.getCellInfo(5, 0)));
  table.setValue(10, 0, number(1e9));
  EXPECT_TRUE(resolver.resolve(table.getCellInfo(6, 0)));
  EXPECT_FALSE(calculator->prepare(styles, table).resolve(table.getCellInfo(6, 0)));
}

/// Throws where a formula asks for another sheet.
class OneSheetContextProvider final : public Formulas::OneTableDocument {
public:
  using Formulas::OneTableDocument::OneTableDocument;

  [[nodiscard]] Formulas::TableContext const* findTableContext(
      std::string_view /*name*/) const override {
    throw std::runtime_error("another sheet");
  }
};

class OneSheetProvider final : public ForwardingValueContextProvider {
public:
  explicit OneSheetProvider(Table const& table)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)),
        _contextProvider(table) {}

  [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const override {
    return _contextProvider;
  }

private:
  OneSheetContextProvider _contextProvider;
};

TEST_F(TableResolverTest, ACallThatThrowsMattersToTheCellsThatTakeItsBranchAlone) {
  addUnary(UnaryConditionalFormatType::FormulaIsTrue,
           "IF(A1<8,A1>AVERAGE($A$1:$A$5),SUM(Other!$A$1:$A$9))");
  ConditionalFormattingPropsCalculator const calculator(std::make_unique<OneSheetProvider>(table));
  auto const resolver = calculator.prepare(styles, table);
  for (int pass = 0; pass < 2; ++pass) {
    EXPECT_TRUE(resolver.resolve(table.getCellInfo(7, 0)));
    EXPECT_THROW(static_cast<void>(resolver.resolve(table.getCellInfo(8, 0))), std::runtime_error);
    EXPECT_FALSE(resolver.resolve(table.getCellInfo(1, 0)));
  }
}

TEST_F(TableResolverTest, AnExceptionOfACellReachesTheCallerOnceAfterTheCellsBeforeIt) {
  addThrowingFrom(7'777);
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    unsigned long visited = 0;
    auto const visit = [&] {
      resolver.visit(
          column, Positions::Existing,
          [&](CellInfo const&, SharedCellStylePtr const&) { ++visited; }, threadCount);
    };
    EXPECT_THROW(visit(), std::bad_function_call);
    EXPECT_EQ(visited, 7'777U) << threadCount << " threads";
  }
}

TEST_F(TableResolverTest, AnExplanationEndsBeforeTheCellThatThrows) {
  addUnary(UnaryConditionalFormatType::GreaterOrEqual, "5000");
  addThrowingFrom(7'777);
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    unsigned long explained = 0;
    auto const explain = [&] {
      resolver.explain(
          column, Positions::Existing,
          [&](CellInfo const& cell, SharedCellStylePtr const&, std::span<std::uint32_t const> why) {
            EXPECT_EQ(cell.getRowIndex(), explained++);
            EXPECT_EQ(why.size(), cell.getRowIndex() >= 5000 ? 1U : 0U);
          },
          threadCount);
    };
    EXPECT_THROW(explain(), std::bad_function_call);
    EXPECT_EQ(explained, 7'777U) << threadCount << " threads";
  }
}

TEST_F(TableResolverTest, AnExceptionOfTheVisitorEndsThePass) {
  addUnary(UnaryConditionalFormatType::Greater, "5");
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    unsigned long visited = 0;
    auto const visit = [&] {
      resolver.visit(
          column, Positions::Existing,
          [&](CellInfo const& cell, SharedCellStylePtr const&) {
            ++visited;
            if (cell.getRowIndex() == 12'345) {
              throw std::runtime_error("enough");
            }
          },
          threadCount);
    };
    EXPECT_THROW(visit(), std::runtime_error);
    EXPECT_EQ(visited, 12'346U) << threadCount << " threads";
  }
}

TEST_F(TableResolverTest, CollectsARangeOnceAndReadsEachCellOnceWhateverTheNumberOfFormats) {
  using Average = AboveAverageConditionalFormatType;
  for (auto const type : {Average::Above, Average::Below, Average::EqualOrAbove}) {
    addFormat(table, {column}, AboveAverageConditionalFormatOperator(type), makeUUID(1));
  }
  std::atomic<std::size_t> reads = 0;
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<CountingValueContextProvider>(table, reads));
  auto const resolver = calculator.prepare(styles, table);
  EXPECT_EQ(reads, 0U) << "nothing is read before a cell needs it";
  static_cast<void>(visitAll(resolver, column, Positions::Existing, 1));
  EXPECT_EQ(reads, 4 * cellCount);
}

TEST_F(TableResolverTest, SeveralThreadsCollectTogetherAndStillReadEachCellOnce) {
  addFormat(table, {column},
            AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above),
            makeUUID(1));
  addFormat(table, {column}, UniquenessConditionalFormatOperator{UniquenessType::Unique},
            makeUUID(1));
  std::atomic<std::size_t> reads = 0;
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<CountingValueContextProvider>(table, reads));
  static_cast<void>(visitAll(calculator.prepare(styles, table), column, Positions::Existing, 3));
  EXPECT_EQ(reads, 3 * cellCount);
}

TEST_F(TableResolverTest, NothingIsCollectedForFormatsThatNoVisitedCellLiesIn) {
  addFormat(table, {{100, 0, cellCount, 1}}, UniquenessConditionalFormatOperator{}, makeUUID(1));
  std::atomic<std::size_t> reads = 0;
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<CountingValueContextProvider>(table, reads));
  static_cast<void>(
      visitAll(calculator.prepare(styles, table), {0, 0, 100, 1}, Positions::Existing, 1));
  EXPECT_EQ(reads, 0U);
}

/// Has a value for every position, whether or not there is a cell.
class EverywhereProvider final : public ForwardingValueContextProvider {
public:
  explicit EverywhereProvider(Table const& table)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)) {}

  [[nodiscard]] FormulaValue getCellValue(CellInfo const& cellInfo) const override {
    return number(static_cast<double>(cellInfo.getRowIndex() % 3));
  }
};

TEST_F(TableResolverTest, AValueWithoutACellIsJudgedByTheCellsThatExist) {
  Table fewCells;
  for (unsigned long const row : {0UL, 1UL, 2UL, 4UL}) {
    fewCells.obtainCell(row, 0);
  }
  TableRange const range{0, 0, 9, 1};
  addFormat(fewCells, {range}, UniquenessConditionalFormatOperator{UniquenessType::Unique},
            makeUUID(1));
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<EverywhereProvider>(fewCells));
  auto const resolver = calculator.prepare(styles, fewCells);
  for (auto const& [index, style] : visitAll(resolver, range, Positions::All, 1)) {
    // The cells hold 0, 1, 2 and 1.
    EXPECT_EQ(style != nullptr, index.getRow().get() % 3 != 1) << index.getRow().get();
  }
}

TEST(TableResolverMoment, IsOneForAWholePassAndAnotherForTheNext) {
  constexpr double today = 46347;
  Table table;
  Styles styles;
  addStyle(styles, makeUUID(1));
  for (unsigned long row = 0; row < 3; ++row) {
    table.setValue(row, 0, number(today));
  }
  addFormat(table, {{0, 0, 3, 1}},
            NullaryConditionalFormatOperator(NullaryConditionalFormatType::Today), makeUUID(1));
  addFormat(table, {{0, 1, 3, 2}},
            UnaryConditionalFormatOperator(UnaryConditionalFormatType::FormulaIsTrue,
                                           Formulas::parseExpr("TODAY()=46347")),
            makeUUID(1));
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  ScopedClock const clock(std::make_shared<RunningClock>());
  auto const countStyled = [&] {
    std::size_t styled = 0;
    for (auto const& [index, style] : visitAll(resolver, {0, 0, 3, 2}, Positions::All, 1)) {
      styled += style ? 1 : 0;
    }
    return styled;
  };
  EXPECT_EQ(countStyled(), 6U) << "the clock is read once, on 21 November";
  EXPECT_EQ(countStyled(), 0U) << "the next pass is a day later";
}

TEST(TableResolverIndex, FindsFormatsAmongThousandsOfFragments) {
  Table table;
  Styles styles;
  addStyle(styles, makeUUID(1));
  addStyle(styles, makeUUID(2));
  for (unsigned long row = 0; row < 3'000; ++row) {
    table.setValue(row, row % 7, number(1));
    auto const style = makeUUID(static_cast<unsigned char>(1 + row % 2));
    addFormat(table, {{row, row % 7, row + 1, row % 7 + 1}, {row + 1, 10, row + 2, 12}},
              holdsAlways(), style);
  }
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  resolver.visit({0, 0, 3'001, 13}, Positions::All,
                 [&](CellInfo const& cell, SharedCellStylePtr const& style) {
                   ASSERT_EQ(style, calculator->resolve(styles, cell))
                       << cell.getRowIndex() << ',' << cell.getColIndex();
                 });
}

TEST(TableResolverDeathTest, PreparingStopsWhereResolvingWould) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  Table table;
  Styles const styles;
  table.addConditionalFormat(nullptr);
  auto const calculator = makeCalculator(table);
  EXPECT_DEATH(static_cast<void>(calculator->prepare(styles, table)),
               "/code/Utils/Public/Ptr/PtrUtils:254: assertion failed: \"plainPtr\"");
  ConditionalFormattingPropsCalculator const withoutProvider(nullptr);
  EXPECT_DEATH(static_cast<void>(withoutProvider.prepare(styles, table)),
               "/code/Utils/Public/Ptr/PtrUtils:254: assertion failed: \"plainPtr\"");
}

TEST(TableResolverDeathTest, ACellStopsWhereResolvingWould) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  Table table;
  Styles const styles;
  table.setValue(0, 0, number(std::numeric_limits<double>::quiet_NaN()));
  addFormat(table, {{0, 0, 1, 1}}, UniquenessConditionalFormatOperator{}, makeUUID(1));
  addFormat(table, {{1, 0, 2, 1}},
            TextConditionalFormatOperator(TextConditionalFormatType::Contains,
                                          std::unique_ptr<FormulaSyntaxTree::Expr>()),
            makeUUID(1));
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  EXPECT_DEATH(static_cast<void>(resolver.resolve(table.getCellInfo(0, 0))),
               "CndFrmt_UniquenessOperator:62: assertion failed: \"valueCount != 0\"");
  EXPECT_DEATH(static_cast<void>(resolver.resolve(table.getCellInfo(1, 0))),
               "/code/Utils/Public/Ptr/PtrUtils:254: assertion failed: \"plainPtr\"");
}

TEST(TableResolverLifetime, StylesOutliveTheResolverAndItsCalculator) {
  Table table;
  Styles styles;
  addStyle(styles, makeUUID(1));
  table.setValue(0, 0, number(1));
  addFormat(table, {{0, 0, 1, 1}}, holdsAlways(), makeUUID(1));
  SharedCellStylePtr style;
  {
    auto const calculator = makeCalculator(table);
    style = calculator->prepare(styles, table).resolve(table.getCellInfo(0, 0));
  }
  ASSERT_TRUE(style);
  EXPECT_EQ(style->get(), CellStyle());
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
