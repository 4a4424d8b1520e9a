#include "ConditionalFormatters/CndFrmt_TableResolver.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <type_traits>
#include <typeindex>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/RandomTable.h"
#include "Formulas/ParseExpr.h"
#include "OfficeUtils/Clock.h"
#include "OfficeUtils/PinnedMoment.h"
#include "Utils/WorkBudget.h"
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
using Positions = TablePass::Positions;
using OnFailure = TablePass::OnFailure;

static_assert(std::is_nothrow_move_constructible_v<TableResolver>);
static_assert(std::is_nothrow_move_assignable_v<TableResolver>);

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
  resolver.visit({range, positions, threadCount}, [&](ResolvedCell const& cell) {
    visited.emplace_back(cell.cellInfo.getCellIndex(), cell.style);
  });
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
    std::vector<FormatIndex> holding;
    for (FormatIndex format = 0; format < formatRefs.size(); ++format) {
      auto const& [ranges, record] = formatRefs[format];
      bool const isOnCell = std::ranges::any_of(ranges, [&](TableRange const& range) {
        return range.contains(cell.getRowIndex(), cell.getColIndex());
      });
      if (isOnCell && (*factory.create(formatRefs[format]))(
                          {provider.getCellValue(cell), cell.getCellIndex()})) {
        holding.push_back(format);
        if (record.get().getStopCalculateConditions()) {
          break;
        }
      }
    }
    return holding;
  };
  for (auto const positions : {Positions::All, Positions::Existing}) {
    for (unsigned const threadCount : {1U, 2U, 7U}) {
      resolver.visit({everything, positions, threadCount}, [&](ResolvedCell const& cell) {
        RC_ASSERT(std::vector(cell.formats.begin(), cell.formats.end()) ==
                  findHolding(cell.cellInfo));
        RC_ASSERT(cell.failure == nullptr);
      });
    }
  }
}

RC_GTEST_PROP(TableResolver, RunsCoverExactlyTheStyledPositions, ()) {
  ScopedClock const clock(noonOn21November());
  RandomTable const random;
  auto const calculator = makeCalculator(random.table);
  auto const resolver = calculator->prepare(random.styles, random.table);
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    auto const runs = resolver.resolveRuns({everything, Positions::All, threadCount});
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
        calculator->prepare(styles, table).resolveRuns({column, Positions::Existing, threadCount});
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs.front().range, (TableRange{100, 0, cellCount, 1}));
  }
}

TEST_F(TableResolverTest, AFormulaWhoseTextNamesATruthValueIsThatValue) {
  addUnary(UnaryConditionalFormatType::FormulaIsTrue, "IF(A1<2,\"true\",\"false\")");
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  EXPECT_TRUE(resolver.resolve(table.getCellInfo(1, 0)));
  EXPECT_FALSE(resolver.resolve(table.getCellInfo(2, 0)));
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
  OneSheetContextProvider(Table const& table, std::exception_ptr failure)
      : OneTableDocument(table), _failure(std::move(failure)) {}

  [[nodiscard]] Formulas::TableContext const* findTableContext(
      std::string_view /*name*/) const override {
    std::rethrow_exception(_failure);
  }

private:
  std::exception_ptr _failure;
};

class OneSheetProvider final : public ForwardingValueContextProvider {
public:
  template <class Exception>
  OneSheetProvider(Table const& table, Exception const& failure)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)),
        _contextProvider(table, std::make_exception_ptr(failure)) {}

  [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const override {
    return _contextProvider;
  }

private:
  OneSheetContextProvider _contextProvider;
};

TEST_F(TableResolverTest, ACallThatThrowsMattersToTheCellsThatTakeItsBranchAlone) {
  addUnary(UnaryConditionalFormatType::FormulaIsTrue,
           "IF(A1<8,A1>AVERAGE($A$1:$A$5),SUM(Other!$A$1:$A$9))");
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<OneSheetProvider>(table, std::runtime_error("another sheet")));
  auto const resolver = calculator.prepare(styles, table);
  for (int pass = 0; pass < 2; ++pass) {
    EXPECT_TRUE(resolver.resolve(table.getCellInfo(7, 0)));
    EXPECT_THROW(static_cast<void>(resolver.resolve(table.getCellInfo(8, 0))), std::runtime_error);
    EXPECT_FALSE(resolver.resolve(table.getCellInfo(1, 0)));
  }
}

TEST_F(TableResolverTest, ALackOfMemoryIsNotTakenForACallThatCannotBeFolded) {
  addUnary(UnaryConditionalFormatType::FormulaIsTrue, "IF(A1<8,TRUE,SUM(Other!$A$1:$A$9))");
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<OneSheetProvider>(table, std::bad_alloc()));
  auto const resolver = calculator.prepare(styles, table);
  EXPECT_THROW(static_cast<void>(resolver.resolve(table.getCellInfo(7, 0))), std::bad_alloc);
}

TEST_F(TableResolverTest, AnExceptionOfACellReachesTheCallerOnceAfterTheCellsBeforeIt) {
  addThrowingFrom(7'777);
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    unsigned long visited = 0;
    auto const visit = [&] {
      resolver.visit({column, Positions::Existing, threadCount},
                     [&](ResolvedCell const&) { ++visited; });
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
      resolver.visit({column, Positions::Existing, threadCount}, [&](ResolvedCell const& cell) {
        EXPECT_EQ(cell.cellInfo.getRowIndex(), explained++);
        EXPECT_EQ(cell.formats.size(), cell.cellInfo.getRowIndex() >= 5000 ? 1U : 0U);
      });
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
      resolver.visit({column, Positions::Existing, threadCount}, [&](ResolvedCell const& cell) {
        ++visited;
        if (cell.cellInfo.getRowIndex() == 12'345) {
          throw std::runtime_error("enough");
        }
      });
    };
    EXPECT_THROW(visit(), std::runtime_error);
    EXPECT_EQ(visited, 12'346U) << threadCount << " threads";
  }
}

/// Formats of all kinds that take operands from their ranges.
void addCollectingFormats(Table& table, TableRange const& range) {
  using Average = AboveAverageConditionalFormatType;
  using Rank = TopBottomConditionalFormatType;
  for (auto const type : {Average::Above, Average::Below, Average::EqualOrAbove}) {
    addFormat(table, {range}, AboveAverageConditionalFormatOperator(type), makeUUID(1));
  }
  for (auto const type : {Rank::Top, Rank::Bottom}) {
    addFormat(table, {range}, TopBottomConditionalFormatOperator(type, 3, false), makeUUID(1));
    addFormat(table, {range}, TopBottomConditionalFormatOperator(type, 10, true), makeUUID(1));
  }
  for (auto const type : {UniquenessType::Unique, UniquenessType::Duplicate}) {
    addFormat(table, {range}, UniquenessConditionalFormatOperator{type}, makeUUID(1));
  }
}

TEST_F(TableResolverTest, CollectsARangeOnceAndReadsEachCellOnceWhateverTheNumberOfFormats) {
  addCollectingFormats(table, column);
  std::atomic<std::size_t> reads = 0;
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<CountingValueContextProvider>(table, reads));
  auto const resolver = calculator.prepare(styles, table);
  EXPECT_EQ(reads, 0U) << "nothing is read before a cell needs it";
  static_cast<void>(visitAll(resolver, column, Positions::Existing, 1));
  EXPECT_EQ(reads, 2 * cellCount);
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
  EXPECT_EQ(reads, 2 * cellCount);
}

/// Lets nobody read a value before two threads want one.
class TwoThreadsProvider final : public ForwardingValueContextProvider {
public:
  explicit TwoThreadsProvider(Table const& table)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)) {}

  [[nodiscard]] FormulaValue getCellValue(CellInfo const& cellInfo) const override {
    std::unique_lock lock(_mutex);
    _readers.insert(std::this_thread::get_id());
    _arrival.notify_all();
    if (!_arrival.wait_for(lock, std::chrono::minutes(1), [&] { return _readers.size() > 1; })) {
      throw std::runtime_error("one thread does all of the work");
    }
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }

private:
  mutable std::mutex _mutex;
  mutable std::condition_variable _arrival;
  mutable std::set<std::thread::id> _readers;
};

TEST_F(TableResolverTest, ThreadsShareAPassOverFewCellsUnderVeryManyFormats) {
  for (int format = 0; format < 200; ++format) {
    addUnary(UnaryConditionalFormatType::FormulaIsTrue, "A1>" + std::to_string(format));
  }
  TableRange const view{100, 0, 1'100, 1};
  TablePass const passes[] = {
      {view, Positions::All, 2},
      {view, Positions::Existing, 2},
      {view, Positions::Formatted, 2},
      {.range = column, .positions = Positions::Areas, .threadCount = 2, .areas = {view}}};
  for (TablePass const& pass : passes) {
    ConditionalFormattingPropsCalculator const calculator(
        std::make_unique<TwoThreadsProvider>(table));
    std::size_t visited = 0;
    calculator.prepare(styles, table).visit(pass, [&](ResolvedCell const&) { ++visited; });
    EXPECT_EQ(visited, 1'000U);
  }
}

/// Notes which threads read values.
class ReadersProvider final : public ForwardingValueContextProvider {
public:
  ReadersProvider(Table const& table, std::set<std::thread::id>& readers)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)),
        _readers(readers) {}

  [[nodiscard]] FormulaValue getCellValue(CellInfo const& cellInfo) const override {
    {
      std::lock_guard const lock(_mutex);
      _readers.insert(std::this_thread::get_id());
    }
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }

private:
  mutable std::mutex _mutex;
  std::set<std::thread::id>& _readers;
};

TEST_F(TableResolverTest, FewCellsUnderFewFormatsAreLeftToTheCallersThread) {
  // Formulas that need much memory then need it once.
  for (int format = 0; format < 16; ++format) {
    addUnary(UnaryConditionalFormatType::FormulaIsTrue, "A1>" + std::to_string(format));
  }
  std::set<std::thread::id> readers;
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<ReadersProvider>(table, readers));
  static_cast<void>(
      visitAll(calculator.prepare(styles, table), {100, 0, 4'100, 1}, Positions::Existing, 7));
  EXPECT_EQ(readers, std::set{std::this_thread::get_id()});
}

TEST_F(TableResolverTest, AFirstSmallViewReadsTheRangeOnceAndItsOwnCellsTwiceMore) {
  addCollectingFormats(table, column);
  std::atomic<std::size_t> reads = 0;
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<CountingValueContextProvider>(table, reads));
  auto const resolver = calculator.prepare(styles, table);
  constexpr std::size_t viewed = 100;
  static_cast<void>(visitAll(resolver, {500, 0, 500 + viewed, 1}, Positions::Existing, 1));
  EXPECT_EQ(reads, cellCount + 2 * viewed);
  reads = 0;
  static_cast<void>(visitAll(resolver, {510, 0, 590, 1}, Positions::Existing, 1));
  EXPECT_EQ(reads, 80U) << "what is known of the cells is kept";
  reads = 0;
  static_cast<void>(visitAll(resolver, {600, 0, 700, 1}, Positions::Existing, 1));
  EXPECT_EQ(reads, cellCount + 100) << "the second view finds all cells that repeat a value";
  reads = 0;
  static_cast<void>(visitAll(resolver, column, Positions::Existing, 1));
  EXPECT_EQ(reads, cellCount);
}

TEST_F(TableResolverTest, SmallViewsAnswerWhatAPassOverAllCellsAnswers) {
  for (unsigned long row = 0; row < cellCount; row += 3) {
    double const repeated = static_cast<double>(row % 700);
    table.setValue(row, 0, row % 2 == 0 ? text(std::to_string(row % 5'000)) : number(repeated));
  }
  addCollectingFormats(table, column);
  auto const calculator = makeCalculator(table);
  auto const listHolding = [](TableResolver const& resolver, TablePass const& pass) {
    std::map<unsigned long, std::vector<FormatIndex>> holding;
    resolver.visit(pass, [&](ResolvedCell const& cell) {
      holding.emplace(cell.cellInfo.getRowIndex(),
                      std::vector(cell.formats.begin(), cell.formats.end()));
    });
    return holding;
  };
  auto const expected = listHolding(calculator->prepare(styles, table), {.range = column});
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    auto const resolver = calculator->prepare(styles, table);
    for (unsigned long const firstRow : {0UL, 19'980UL, 10UL}) {
      TableRange const view{firstRow, 0, firstRow + 20, 1};
      for (auto const& [row, formats] :
           listHolding(resolver, {.range = view, .threadCount = threadCount})) {
        EXPECT_EQ(formats, expected.at(row)) << row;
      }
    }
  }
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

TEST_F(TableResolverTest, ACellThatFailsIsVisitedWithItsFailureIfThePassSkipsFailures) {
  addUnary(UnaryConditionalFormatType::GreaterOrEqual, "0");
  addFormat(table, {{4'500, 0, 4'502, 1}, {cellCount - 1, 0, cellCount, 1}},
            NullaryConditionalFormatOperator(static_cast<NullaryConditionalFormatType>(14)));
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  for (auto const positions : {Positions::Existing, Positions::All, Positions::Formatted}) {
    for (unsigned const threadCount : {1U, 2U, 7U}) {
      unsigned long visited = 0;
      resolver.visit(
          {column, positions, threadCount, OnFailure::Skip}, [&](ResolvedCell const& cell) {
            unsigned long const row = cell.cellInfo.getRowIndex();
            ASSERT_EQ(row, visited++);
            bool const fails = row == 4'500 || row == 4'501 || row == cellCount - 1;
            ASSERT_EQ(cell.failure != nullptr, fails) << row;
            ASSERT_EQ(cell.style == nullptr, fails) << row;
            ASSERT_EQ(cell.formats.size(), 1U) << row;
            if (fails) {
              EXPECT_EQ(cell.failure->format, 1U);
              EXPECT_THROW(std::rethrow_exception(cell.failure->exception), std::bad_function_call);
            }
          });
      EXPECT_EQ(visited, cellCount) << threadCount << " threads";
    }
  }
}

TEST_F(TableResolverTest, APassOverAreasVisitsTheirPositionsOnceRowByRow) {
  addUnary(UnaryConditionalFormatType::GreaterOrEqual, "0");
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  std::vector<TableRange> const areas{{2, 0, 4, 1}, {3, 0, 5, 3}, {9, 9, 9, 9}, {700, 0, 701, 1}};
  TableRange const range{3, 0, 600, 2};
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    TablePass const pass{range, Positions::Areas, threadCount, OnFailure::Stop, areas};
    EXPECT_EQ(TableResolver::countPositions(pass), 4U);
    using Position = std::pair<unsigned long, unsigned long>;
    std::vector<Position> visited;
    resolver.visit(pass, [&](ResolvedCell const& cell) {
      visited.emplace_back(cell.cellInfo.getRowIndex(), cell.cellInfo.getColIndex());
      EXPECT_EQ(cell.style != nullptr, cell.cellInfo.getColIndex() == 0);
    });
    EXPECT_EQ(visited, (std::vector<Position>{{3, 0}, {3, 1}, {4, 0}, {4, 1}}));
    std::vector<Position> judged;
    resolver.visitVerdicts(0, pass, [&](CellVerdict const& verdict) {
      judged.emplace_back(verdict.cellInfo.getRowIndex(), verdict.cellInfo.getColIndex());
      EXPECT_TRUE(verdict.holds);
    });
    EXPECT_EQ(judged, (std::vector<Position>{{3, 0}, {4, 0}}));
  }
}

TEST_F(TableResolverTest, AnExhaustedBudgetEndsAPassAfterTheCellsBefore) {
  addUnary(UnaryConditionalFormatType::GreaterOrEqual, "0");
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  for (auto const onFailure : {OnFailure::Stop, OnFailure::Skip}) {
    for (unsigned const threadCount : {1U, 2U, 7U}) {
      WorkBudget budget({.steps = 10'000});
      unsigned long visited = 0;
      auto const visit = [&] {
        resolver.visit({column, Positions::Existing, threadCount, onFailure, {}, &budget},
                       [&](ResolvedCell const& cell) {
                         EXPECT_EQ(cell.cellInfo.getRowIndex(), visited++);
                         EXPECT_EQ(cell.failure, nullptr);
                       });
      };
      EXPECT_THROW(visit(), WorkBudgetExceeded);
      EXPECT_LT(visited, cellCount) << threadCount << " threads";
      EXPECT_THROW(static_cast<void>(resolver.resolveRuns(
                       {column, Positions::Existing, threadCount, onFailure, {}, &budget})),
                   WorkBudgetExceeded);
      EXPECT_THROW(
          resolver.visitVerdicts(0, {column, Positions::All, threadCount, onFailure, {}, &budget},
                                 [](CellVerdict const& /*verdict*/) {}),
          WorkBudgetExceeded);
    }
  }
}

TEST_F(TableResolverTest, ARequestToStopEndsAPass) {
  addUnary(UnaryConditionalFormatType::GreaterOrEqual, "0");
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  // Far more than threads work ahead of the visitor.
  TableRange const range = {0, 0, 50 * cellCount, 1};
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    std::stop_source source;
    WorkBudget budget({}, source.get_token());
    unsigned long visited = 0;
    auto const visit = [&] {
      resolver.visit({range, Positions::All, threadCount, OnFailure::Skip, {}, &budget},
                     [&](ResolvedCell const& /*cell*/) {
                       ++visited;
                       source.request_stop();
                     });
    };
    EXPECT_THROW(visit(), WorkStopped);
    EXPECT_LT(visited, range.endRow) << threadCount << " threads";
  }
}

TEST_F(TableResolverTest, ManyFormatsOnOneCellSpendAStepEach) {
  for (int format = 0; format < 2'000; ++format) {
    addFormat(table, {{0, 0, 1, 1}}, holdsNever());
  }
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  WorkBudget budget({});
  resolver.visit({.range = {0, 0, 1, 1}, .budget = &budget}, [](ResolvedCell const& /*cell*/) {});
  EXPECT_GT(budget.getSteps(), 1'000U);
}

/// Has no memory for the value of a cell.
class OutOfMemoryProvider final : public ForwardingValueContextProvider {
public:
  explicit OutOfMemoryProvider(Table const& table)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)) {}

  [[nodiscard]] FormulaValue getCellValue(CellInfo const& cellInfo) const override {
    if (cellInfo.getRowIndex() == 700) {
      throw std::bad_alloc();
    }
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }
};

TEST_F(TableResolverTest, ALackOfMemoryEndsAPassThatSkipsFailures) {
  addFormat(table, {column}, holdsAlways());
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<OutOfMemoryProvider>(table));
  auto const resolver = calculator.prepare(styles, table);
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    unsigned long visited = 0;
    auto const visit = [&] {
      resolver.visit({column, Positions::Existing, threadCount, OnFailure::Skip},
                     [&](ResolvedCell const& /*cell*/) { ++visited; });
    };
    EXPECT_THROW(visit(), std::bad_alloc);
    EXPECT_EQ(visited, 700U) << threadCount << " threads";
  }
}

TEST_F(TableResolverTest, FormulasSpendTheirStepsFromTheBudgetOfThePass) {
  addUnary(UnaryConditionalFormatType::Greater, "SUMPRODUCT(A1:A10000*A1:A10000)");
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  for (unsigned const threadCount : {1U, 2U}) {
    WorkBudget ample({});
    TablePass pass{.range = {0, 0, 8, 1}, .threadCount = threadCount, .budget = &ample};
    auto const ignore = [](ResolvedCell const& /*cell*/) {};
    resolver.visit(pass, ignore);
    EXPECT_GT(ample.getSteps(), 80'000U);
    WorkBudget scant({.steps = 30'000});
    pass.budget = &scant;
    pass.onFailure = OnFailure::Skip;
    EXPECT_THROW(resolver.visit(pass, ignore), WorkBudgetExceeded);
  }
}

TEST_F(TableResolverTest, AFormulaWhoseFoldingABudgetEndedIsFoldedByTheNextPass) {
  addUnary(UnaryConditionalFormatType::Greater, "SUMPRODUCT($A$1:$A$10000*$A$1:$A$10000)+A1");
  auto const calculator = makeCalculator(table);
  auto const countSteps = [](TableResolver const& resolver) {
    WorkBudget ample({});
    resolver.visit({.range = {0, 0, 8, 1}, .budget = &ample}, [](ResolvedCell const&) {});
    return ample.getSteps();
  };
  auto const resolver = calculator->prepare(styles, table);
  WorkBudget scant({.steps = 5'000});
  EXPECT_THROW(
      resolver.visit({.range = {0, 0, 8, 1}, .budget = &scant}, [](ResolvedCell const&) {}),
      WorkBudgetExceeded);
  EXPECT_EQ(countSteps(resolver), countSteps(calculator->prepare(styles, table)));
}

TEST_F(TableResolverTest, ACollectionThatABudgetEndedIsTriedAgain) {
  addFormat(table, {column}, UniquenessConditionalFormatOperator{UniquenessType::Unique});
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  WorkBudget budget({.bytes = 1});
  auto const count = [&](WorkBudget* lent) {
    unsigned long styled = 0;
    resolver.visit({.range = column, .budget = lent},
                   [&](ResolvedCell const& cell) { styled += cell.formats.size(); });
    return styled;
  };
  EXPECT_THROW(static_cast<void>(count(&budget)), WorkBudgetExceeded);
  EXPECT_EQ(count(nullptr), cellCount);
}

TEST_F(TableResolverTest, AnExceptionOfTheVisitorEndsAPassThatSkipsFailures) {
  addThrowingFrom(0);
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    unsigned long visited = 0;
    auto const visit = [&] {
      resolver.visit({column, Positions::Existing, threadCount, OnFailure::Skip},
                     [&](ResolvedCell const& cell) {
                       ++visited;
                       if (cell.cellInfo.getRowIndex() == 4'500) {
                         throw std::runtime_error("no room");
                       }
                     });
    };
    EXPECT_THROW(visit(), std::runtime_error);
    EXPECT_EQ(visited, 4'501U) << threadCount << " threads";
  }
}

TEST_F(TableResolverTest, RunsLeaveOutCellsThatFailIfThePassSkipsFailures) {
  addUnary(UnaryConditionalFormatType::GreaterOrEqual, "0");
  addThrowingFrom(9'000);
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  for (unsigned const threadCount : {1U, 2U}) {
    auto const runs =
        resolver.resolveRuns({column, Positions::Existing, threadCount, OnFailure::Skip});
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs.front().range, (TableRange{0, 0, 9'000, 1}));
  }
}

TEST(TableResolverFormatted, VisitsThePositionsInTheRangesOfFormatsWithOrWithoutACell) {
  Table table;
  Styles const styles;
  table.setValue(1, 0, number(1));
  addFormat(table, {{0, 0, 2, 1}, {0, 0, 1, 2}}, holdsAlways());
  addFormat(table, {{5, 3, 6, 4}, {900, 16'000, 901, 16'001}}, holdsNever());
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  std::vector<CellIndex> const expected{{RowIndex(0), ColumnIndex(0)},
                                        {RowIndex(0), ColumnIndex(1)},
                                        {RowIndex(1), ColumnIndex(0)},
                                        {RowIndex(5), ColumnIndex(3)}};
  TableRange const range{0, 0, 800, 16'384};
  for (unsigned const threadCount : {1U, 2U}) {
    std::vector<CellIndex> visited;
    resolver.visit({range, Positions::Formatted, threadCount}, [&](ResolvedCell const& cell) {
      visited.push_back(cell.cellInfo.getCellIndex());
      EXPECT_EQ(cell.cellInfo.getCell() != nullptr, cell.cellInfo.getRowIndex() == 1);
    });
    EXPECT_EQ(visited, expected);
  }
  EXPECT_EQ(resolver.countFormatted(range), 4U);
  EXPECT_EQ(resolver.countFormatted({0, 0, 1'048'576, 16'384}), 5U);
  EXPECT_EQ(resolver.countFormatted(0, range), 3U);
}

RC_GTEST_PROP(TableResolver, VisitsTheFormattedPositionsOfAllOnAnyNumberOfThreads, ()) {
  ScopedClock const clock(noonOn21November());
  RandomTable const random;
  auto const calculator = makeCalculator(random.table);
  auto const resolver = calculator->prepare(random.styles, random.table);
  auto const& formatRefs = calculator->getConditionalFormatRefs(random.table);
  auto const isFormatted = [&](CellIndex cell) {
    return std::ranges::any_of(formatRefs, [&](ConditionalFormatRef const& formatRef) {
      return std::ranges::any_of(formatRef.first, [&](TableRange const& range) {
        return range.contains(cell.getRow().get(), cell.getColumn().get());
      });
    });
  };
  auto expected = visitAll(resolver, everything, Positions::All, 1);
  std::erase_if(expected, [&](auto const& visited) { return !isFormatted(visited.first); });
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    RC_ASSERT(visitAll(resolver, everything, Positions::Formatted, threadCount) == expected);
  }
  RC_ASSERT(resolver.countFormatted(everything) == expected.size());
}

/// Notes which moments are pinned while it is asked.
class PinWatchingProvider final : public ForwardingValueContextProvider {
public:
  explicit PinWatchingProvider(Table const& table)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)) {}

  [[nodiscard]] FormulaValue getCellValue(CellInfo const& cellInfo) const override {
    EXPECT_EQ(OfficeUtils::PinnedMoment::getCurrent(), nullptr);
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }
};

TEST_F(TableResolverTest, NoMomentIsPinnedAroundTheProviderAndTheVisitor) {
  addFormat(table, {column}, NullaryConditionalFormatOperator(NullaryConditionalFormatType::Today),
            makeUUID(1));
  addFormat(table, {column},
            AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above));
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<PinWatchingProvider>(table));
  for (unsigned const threadCount : {1U, 3U}) {
    auto const resolver = calculator.prepare(styles, table);
    resolver.visit({column, Positions::Existing, threadCount}, [](ResolvedCell const&) {
      ASSERT_EQ(OfficeUtils::PinnedMoment::getCurrent(), nullptr);
    });
    resolver.visitVerdicts(0, {column, Positions::Existing, threadCount}, [](CellVerdict const&) {
      ASSERT_EQ(OfficeUtils::PinnedMoment::getCurrent(), nullptr);
    });
    static_cast<void>(resolver.resolve(table.getCellInfo(0, 0)));
    static_cast<void>(resolver.holds(0, table.getCellInfo(0, 0)));
  }
}

TEST(TableResolverMoment, IsTheOneThatTheCallerPinned) {
  Table table;
  Styles styles;
  addStyle(styles, makeUUID(1));
  table.setValue(0, 0, number(46347));  // 21 November 2026
  addFormat(table, {{0, 0, 1, 1}},
            NullaryConditionalFormatOperator(NullaryConditionalFormatType::Today), makeUUID(1));
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  ScopedClock const clock(noonOn21November() + std::chrono::days(1));
  TableRange const range{0, 0, 1, 1};
  EXPECT_EQ(visitAll(resolver, range, Positions::All, 1).front().second, nullptr);
  OfficeUtils::PinnedMoment const pinned(noonOn21November());
  EXPECT_NE(visitAll(resolver, range, Positions::All, 1).front().second, nullptr);
  EXPECT_NE(resolver.resolve(table.getCellInfo(0, 0)), nullptr);
}

TEST(TableResolverIndex, FindsFormatsAmongThousandsOfFragments) {
  constexpr unsigned long count = 3'000;
  Table table;
  Styles const styles;
  // Each format lies on one cell of a slanting line, and on two of the row below.
  for (unsigned long row = 0; row < count; ++row) {
    table.setValue(row, row % 7, number(1));
    addFormat(table, {{row, row % 7, row + 1, row % 7 + 1}, {row + 1, 10, row + 2, 12}},
              holdsAlways());
  }
  auto const calculator = makeCalculator(table);
  auto const resolver = calculator->prepare(styles, table);
  resolver.visit({{0, 0, count + 1, 13}, Positions::All}, [&](ResolvedCell const& cell) {
    unsigned long const row = cell.cellInfo.getRowIndex();
    unsigned long const column = cell.cellInfo.getColIndex();
    std::vector<FormatIndex> expected;
    if (column == row % 7 && row < count) {
      expected.push_back(static_cast<FormatIndex>(row));
    } else if ((column == 10 || column == 11) && row > 0) {
      expected.push_back(static_cast<FormatIndex>(row - 1));
    }
    if (!std::ranges::equal(cell.formats, expected)) {
      FAIL() << row << ',' << column;
    }
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
