#include "ConditionalFormatters/CndFrmt_TableResolver.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <typeindex>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <boost/variant/get.hpp>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/RandomTable.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/ParseExpr.h"
#include "OfficeUtils/Clock.h"
#include "OfficeUtils/PinnedMoment.h"
#include "Utils/Exceptions.h"
#include "support/CountingValueContextProvider.h"
#include "support/Documents.h"
#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"
#include "support/RunningClock.h"
#include "support/Threads.h"
#include "support/Values.h"

// TableResolver::holds(): the condition of one format by itself.
namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using namespace DOM;
using OfficeUtils::PinnedMoment;
using OfficeUtils::ScopedClock;

/// Answer of a condition, or the exception that it throws.
struct Verdict {
  bool holds = false;
  std::type_index thrown = typeid(void);
  std::string message = {};

  friend bool operator==(Verdict const&, Verdict const&) = default;
};

Verdict judge(std::function<bool()> const& ask) {
  try {
    return {.holds = ask()};
  } catch (std::exception const& exception) {
    return {.thrown = typeid(exception), .message = exception.what()};
  }
}

/// Answer of the format's own operator, made for this cell alone.
Verdict judgeByOperator(ValueContextProvider const& provider, ConditionalFormatRef const& formatRef,
                        CellInfo const& cell) {
  return judge([&] {
    auto const condition = OperatorsFactory(provider, cell.getTable()).create(formatRef);
    return (*condition)({provider.getCellValue(cell), cell.getCellIndex()});
  });
}

bool isInRanges(std::vector<TableRange> const& ranges, CellInfo const& cell) {
  return std::ranges::any_of(ranges, [&](TableRange const& range) {
    return range.contains(cell.getRowIndex(), cell.getColIndex());
  });
}

/// True if a uniqueness condition is asked about a value that its ranges do not have, which stops
/// the process.
bool isFatal(ConditionalFormatRef const& formatRef, CellInfo const& cell) {
  auto const& record = formatRef.second.get().getOperator();
  if (boost::get<UniquenessConditionalFormatOperator>(&record) == nullptr ||
      cell.getCell() == nullptr || FormulaModel::isFormulaEmpty(cell.getCell()->value)) {
    return false;
  }
  FormulaModel::FormulaValuesComarator<std::equal_to> const isEqual;
  for (unsigned long row = 0; row < RandomTable::rows; ++row) {
    for (unsigned long column = 0; column < RandomTable::columns; ++column) {
      CellInfo const other = cell.getTable().getCellInfo(row, column);
      if (isInRanges(formatRef.first, other) && other.getCell() != nullptr &&
          isEqual(other.getCell()->value, cell.getCell()->value)) {
        return false;
      }
    }
  }
  return true;
}

/// Each format's place with each cell that it can be asked about, inside its ranges and outside.
std::vector<std::pair<std::size_t, CellInfo>> listQuestions(Table const& table,
                                                            ConditionalFormatRefs const& refs) {
  std::vector<std::pair<std::size_t, CellInfo>> questions;
  for (std::size_t format = 0; format < refs.size(); ++format) {
    for (unsigned long row = 0; row < RandomTable::rows + 3; ++row) {
      for (unsigned long column = 0; column < RandomTable::columns + 3; ++column) {
        CellInfo const cell = table.getCellInfo(row, column);
        if (!isFatal(refs[format], cell)) {
          questions.emplace_back(format, cell);
        }
      }
    }
  }
  return questions;
}

RC_GTEST_PROP(TableResolverHolds, AnswersWhatTheOperatorOfTheFormatAnswersForEveryCell, ()) {
  ScopedClock const clock(noonOn21November());
  RandomTable const random({.withUnknownKinds = true});
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<PlainValueContextProvider>(random.table));
  auto const resolver = calculator.prepare(random.styles, random.table);
  auto const& formatRefs = calculator.getConditionalFormatRefs(random.table);
  PlainValueContextProvider const provider(random.table);
  for (auto const& question : listQuestions(random.table, formatRefs)) {
    auto const verdict = judge([&] { return resolver.holds(question.first, question.second); });
    RC_ASSERT(verdict == judgeByOperator(provider, formatRefs[question.first], question.second));
  }
}

RC_GTEST_PROP(TableResolverHolds, MayBeAskedBySeveralThreadsBesidePasses, ()) {
  ScopedClock const clock(noonOn21November());
  RandomTable const random;
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<PlainValueContextProvider>(random.table));
  auto const resolver = calculator.prepare(random.styles, random.table);
  auto const& formatRefs = calculator.getConditionalFormatRefs(random.table);
  PlainValueContextProvider const provider(random.table);
  auto const questions = listQuestions(random.table, formatRefs);
  std::vector<std::vector<Verdict>> verdicts(3);
  runOnThreads(verdicts.size() + 1, [&](std::size_t thread) {
    if (thread == verdicts.size()) {
      resolver.visit({{0, 0, RandomTable::rows, RandomTable::columns}, TablePass::Positions::All},
                     [](ResolvedCell const&) {});
      return;
    }
    for (auto const& question : questions) {
      verdicts[thread].push_back(
          judge([&] { return resolver.holds(question.first, question.second); }));
    }
  });
  for (std::size_t number = 0; number < questions.size(); ++number) {
    auto const& [format, cell] = questions[number];
    auto const expected = judgeByOperator(provider, formatRefs[format], cell);
    for (auto const& ofThread : verdicts) {
      RC_ASSERT(ofThread[number] == expected);
    }
  }
}

/// The verdicts of a pass: position, and what was told of it.
std::vector<std::pair<CellIndex, Verdict>> visitVerdicts(TableResolver const& resolver,
                                                         std::size_t format, TablePass pass) {
  pass.onFailure = TablePass::OnFailure::Skip;
  std::vector<std::pair<CellIndex, Verdict>> verdicts;
  resolver.visitVerdicts(format, pass, [&](CellVerdict const& verdict) {
    auto const answer = [&] {
      if (verdict.failure != nullptr) {
        RC_ASSERT(verdict.failure->format == format);
        RC_ASSERT(!verdict.holds);
        std::rethrow_exception(verdict.failure->exception);
      }
      return verdict.holds;
    };
    verdicts.emplace_back(verdict.cellInfo.getCellIndex(), judge(answer));
  });
  return verdicts;
}

RC_GTEST_PROP(TableResolverVerdicts, AreThoseOfHoldsForThePositionsOfTheFormat, ()) {
  ScopedClock const clock(noonOn21November());
  RandomTable const random({.withUnknownKinds = true});
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<PlainValueContextProvider>(random.table));
  auto const resolver = calculator.prepare(random.styles, random.table);
  auto const& formatRefs = calculator.getConditionalFormatRefs(random.table);
  TableRange const range{1, 0, RandomTable::rows + 1, RandomTable::columns};
  for (std::size_t format = 0; format < formatRefs.size(); ++format) {
    std::vector<std::pair<CellIndex, Verdict>> all;
    std::vector<std::pair<CellIndex, Verdict>> existing;
    for (unsigned long row = range.firstRow; row < range.endRow; ++row) {
      for (unsigned long column = range.firstColumn; column < range.endColumn; ++column) {
        CellInfo const cell = random.table.getCellInfo(row, column);
        if (isInRanges(formatRefs[format].first, cell)) {
          all.emplace_back(cell.getCellIndex(),
                           judge([&] { return resolver.holds(format, cell); }));
          if (cell.getCell() != nullptr) {
            existing.push_back(all.back());
          }
        }
      }
    }
    RC_ASSERT(resolver.countFormatted(format, range) == all.size());
    using Positions = TablePass::Positions;
    for (unsigned const threadCount : {1U, 3U}) {
      RC_ASSERT(visitVerdicts(resolver, format, {range, Positions::All, threadCount}) == all);
      RC_ASSERT(visitVerdicts(resolver, format, {range, Positions::Formatted, threadCount}) == all);
      RC_ASSERT(visitVerdicts(resolver, format, {range, Positions::Existing, threadCount}) ==
                existing);
    }
  }
}

/// A column of the numbers 0, 1, 2 ...
class TableResolverHoldsTest : public testing::Test {
protected:
  static constexpr unsigned long cellCount = 300;

  TableResolverHoldsTest() {
    for (unsigned long row = 0; row < cellCount; ++row) {
      table.setValue(row, 0, number(static_cast<double>(row)));
    }
  }

  void addFormula(std::string const& formula) {
    addFormat(table, {column},
              UnaryConditionalFormatOperator(UnaryConditionalFormatType::FormulaIsTrue,
                                             Formulas::parseExpr(formula)));
  }

  void addUnique(std::vector<TableRange> const& ranges) {
    addFormat(table, ranges, UniquenessConditionalFormatOperator{UniquenessType::Unique});
  }

  [[nodiscard]] ConditionalFormattingPropsCalculator makeCalculator() const {
    return ConditionalFormattingPropsCalculator(std::make_unique<PlainValueContextProvider>(table));
  }

  TableRange const column{0, 0, cellCount, 1};
  Table table;
  Styles styles;
};

TEST_F(TableResolverHoldsTest, LooksAtNeitherPriorityNorStopFlagNorRanges) {
  addFormat(table, {column}, holdsAlways(), UUID(), true);
  addFormat(table, {column}, holdsNever(), UUID(), true);
  addFormat(table, {{0, 7, 1, 8}}, holdsAlways());
  addFormat(table, {}, holdsAlways());
  auto const calculator = makeCalculator();
  auto const resolver = calculator.prepare(styles, table);
  CellInfo const cell = table.getCellInfo(5, 0);
  EXPECT_TRUE(resolver.holds(0, cell));
  EXPECT_FALSE(resolver.holds(1, cell));
  EXPECT_TRUE(resolver.holds(2, cell));
  EXPECT_TRUE(resolver.holds(3, cell));
}

TEST_F(TableResolverHoldsTest, CollectsARangeOnceAndReadsEachCellOnce) {
  using Average = AboveAverageConditionalFormatType;
  addFormat(table, {column}, AboveAverageConditionalFormatOperator(Average::Above));
  addUnique({column});
  std::atomic<std::size_t> reads = 0;
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<CountingValueContextProvider>(table, reads));
  auto const resolver = calculator.prepare(styles, table);
  for (std::size_t const format : {0U, 1U}) {
    reads = 0;
    for (unsigned long row = 0; row < cellCount; ++row) {
      EXPECT_EQ(resolver.holds(format, table.getCellInfo(row, 0)),
                format == 1 || row >= cellCount / 2);
    }
    EXPECT_EQ(reads, 2 * cellCount);
  }
}

/// A remembered answer shows when the document changes, which a resolver's users promise not to do.
TEST_F(TableResolverHoldsTest, WalksTheRangeOfACountIfAFewTimesOnly) {
  addFormula("COUNTIF($A$1:$A$300,A1)=1");
  auto const calculator = makeCalculator();
  auto const resolver = calculator.prepare(styles, table);
  for (unsigned long row = 0; row < 10; ++row) {
    EXPECT_TRUE(resolver.holds(0, table.getCellInfo(row, 0)));
  }
  for (unsigned long row = 100; row < cellCount; ++row) {
    table.setValue(row, 0, number(50));
  }
  EXPECT_FALSE(calculator.prepare(styles, table).holds(0, table.getCellInfo(50, 0)));
  EXPECT_TRUE(resolver.holds(0, table.getCellInfo(50, 0)));
}

TEST_F(TableResolverHoldsTest, EvaluatesAnArgumentThatIsTheSameForEveryCellOnce) {
  addFormat(table, {column},
            UnaryConditionalFormatOperator(UnaryConditionalFormatType::Greater,
                                           Formulas::parseExpr("$A$101")));
  auto const calculator = makeCalculator();
  auto const resolver = calculator.prepare(styles, table);
  EXPECT_FALSE(resolver.holds(0, table.getCellInfo(100, 0)));
  table.setValue(100, 0, number(200));
  EXPECT_TRUE(resolver.holds(0, table.getCellInfo(150, 0))) << "greater than 100";
  EXPECT_FALSE(calculator.prepare(styles, table).holds(0, table.getCellInfo(150, 0)));
}

/// Gives the values that a function returns or throws.
class AnsweringProvider final : public ForwardingValueContextProvider {
public:
  using Answer = std::function<FormulaValue(CellInfo const&)>;

  AnsweringProvider(Table const& table, Answer answer)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)),
        _answer(std::move(answer)) {}

  [[nodiscard]] FormulaValue getCellValue(CellInfo const& cellInfo) const override {
    return _answer(cellInfo);
  }

private:
  Answer _answer;
};

TEST_F(TableResolverHoldsTest, ComparesCellsWithNumbersAsOperatorsDo) {
  double const infinity = std::numeric_limits<double>::infinity();
  FormulaValue const values[] = {number(1),
                                 number(2),
                                 number(std::nextafter(2, 3)),
                                 number(3),
                                 number(-infinity),
                                 number(infinity),
                                 number(std::numeric_limits<double>::quiet_NaN()),
                                 text("2"),
                                 text("a"),
                                 boolean(true),
                                 error(FormulaModel::FormulaErrorCode::Value),
                                 FormulaValue()};
  for (std::size_t row = 0; row < std::size(values); ++row) {
    table.setValue(row, 0, values[row]);
    table.setValue(row, 1, values[std::size(values) - 1 - row]);
  }
  table.removeCell(std::size(values), 0);
  for (char const* const formula :
       {"A1=2", "A1<>2", "A1<2", "A1<=2", "A1>2", "A1>=2", "2=A1", "2>A1", "2<=A1", "A$1=1",
        "A$1>1", "$A1>2", "$A1<2", "B1>2", "A2>2", "B$2>2", "A1>SUM($A$1:$A$3)/2",
        "SUM($A$1:$A$3)/2>=A1"}) {
    SCOPED_TRACE(formula);
    table.setConditionalFormats({});
    addFormat(table, {{0, 0, std::size(values) + 2, 2}},
              UnaryConditionalFormatOperator(UnaryConditionalFormatType::FormulaIsTrue,
                                             Formulas::parseExpr(formula)));
    auto const calculator = makeCalculator();
    auto const resolver = calculator.prepare(styles, table);
    auto const& formatRef = calculator.getConditionalFormatRefs(table).front();
    PlainValueContextProvider const provider(table);
    for (unsigned long cell = 2 * std::size(values) + 4; cell-- > 0;) {
      CellInfo const asked = table.getCellInfo(cell / 2, cell % 2);
      EXPECT_EQ(judge([&] { return resolver.holds(0, asked); }).holds,
                judgeByOperator(provider, formatRef, asked).holds)
          << cell / 2 << ", " << cell % 2;
    }
  }
}

TEST_F(TableResolverHoldsTest, ComparesTheCellThatFormulasReadWhereverTheyReadIt) {
  /// Formulas read another table than that of the formats, whose values are tenfold.
  class OtherTable final : public ForwardingValueContextProvider {
  public:
    OtherTable(Table const& formatted, Table const& read)
        : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(formatted)),
          _document(read) {}

    [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const override {
      return _document;
    }

  private:
    class Document final : public Formulas::OneTableDocument {
    public:
      explicit Document(Table const& read) : OneTableDocument(read), _read(read) {}

      [[nodiscard]] Formulas::TableContext const* getTableContext(
          Table const& /*asked*/) const override {
        return OneTableDocument::getTableContext(_read);
      }

    private:
      Table const& _read;
    };

    Document _document;
  };
  Table read;
  for (unsigned long row = 0; row < cellCount; ++row) {
    read.setValue(row, 0, number(static_cast<double>(row) * 10));
  }
  addFormula("A1>100");
  ConditionalFormattingPropsCalculator const calculator(std::make_unique<OtherTable>(table, read));
  auto const resolver = calculator.prepare(styles, table);
  EXPECT_FALSE(resolver.holds(0, table.getCellInfo(10, 0)));
  EXPECT_TRUE(resolver.holds(0, table.getCellInfo(11, 0)));
  EXPECT_FALSE(resolver.holds(0, table.getCellInfo(9, 0)));
}

TEST_F(TableResolverHoldsTest, ACellThatThrowsLeavesTheOthersAlone) {
  addFormula("A1>5");
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<AnsweringProvider>(table, [](CellInfo const& cell) {
        return cell.getRowIndex() % 3 == 1 ? throw std::runtime_error("no value")
                                           : cell.getCell()->value;
      }));
  auto const resolver = calculator.prepare(styles, table);
  for (unsigned long row = 0; row < cellCount; ++row) {
    auto const verdict = judge([&] { return resolver.holds(0, table.getCellInfo(row, 0)); });
    Verdict const expected =
        row % 3 == 1 ? Verdict{.thrown = typeid(std::runtime_error), .message = "no value"}
                     : Verdict{.holds = row > 5};
    EXPECT_EQ(verdict, expected) << row;
  }
}

TEST_F(TableResolverHoldsTest, AConditionThatCannotBeMadeIsTriedAgainForTheNextCell) {
  addFormat(table, {column},
            AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above));
  bool isBroken = true;
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<AnsweringProvider>(table, [&](CellInfo const& cell) {
        return isBroken && cell.getRowIndex() == 7 ? throw std::runtime_error("no value")
                                                   : cell.getCell()->value;
      }));
  auto const resolver = calculator.prepare(styles, table);
  CellInfo const last = table.getCellInfo(cellCount - 1, 0);
  EXPECT_THROW(static_cast<void>(resolver.holds(0, last)), std::runtime_error);
  EXPECT_THROW(static_cast<void>(resolver.holds(0, last)), std::runtime_error);
  isBroken = false;
  EXPECT_TRUE(resolver.holds(0, last));
}

TEST_F(TableResolverHoldsTest, AValueOfAnotherPlaceIsLookedForAmongThoseOfTheRanges) {
  // 0, 1, 2, 3, 4 and, beyond the range, 1 and 2; 2 stands twice in the range.
  for (unsigned long const row : {5UL, 6UL}) {
    table.setValue(row, 0, number(static_cast<double>(row - 4)));
  }
  table.setValue(4, 0, number(2));
  addUnique({{0, 0, 3, 1}, {3, 0, 5, 1}});
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<AnsweringProvider>(table, [](CellInfo const& cell) {
        return cell.getCell() != nullptr ? cell.getCell()->value : number(3);
      }));
  auto const resolver = calculator.prepare(styles, table);
  EXPECT_TRUE(resolver.holds(0, table.getCellInfo(1, 0)));
  EXPECT_FALSE(resolver.holds(0, table.getCellInfo(2, 0)));
  EXPECT_TRUE(resolver.holds(0, table.getCellInfo(5, 0))) << "1, beyond the range";
  EXPECT_FALSE(resolver.holds(0, table.getCellInfo(6, 0))) << "2, beyond the range";
  EXPECT_TRUE(resolver.holds(0, table.getCellInfo(0, 9))) << "3, where there is no cell";
}

TEST_F(TableResolverHoldsTest, AFailureEndsAPassOverVerdictsAfterTheCellsBeforeIt) {
  addFormula("A1>5");
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<AnsweringProvider>(table, [](CellInfo const& cell) {
        return cell.getRowIndex() == 77 ? throw std::runtime_error("no value")
                                        : cell.getCell()->value;
      }));
  auto const resolver = calculator.prepare(styles, table);
  for (unsigned const threadCount : {1U, 2U}) {
    unsigned long visited = 0;
    auto const visit = [&] {
      resolver.visitVerdicts(0, {.range = column, .threadCount = threadCount},
                             [&](CellVerdict const&) { ++visited; });
    };
    EXPECT_THROW(visit(), std::runtime_error);
    EXPECT_EQ(visited, 77U);
  }
}

bool isNumber(boost::optional<FormulaValue> const& value, double expected) {
  auto const* const number = value ? boost::get<FormulaModel::FormulaNumber>(&*value) : nullptr;
  return number != nullptr && number->value.get() == expected;
}

TEST_F(TableResolverHoldsTest, TellsTheOperandsThatACellIsTestedAgainst) {
  using Number = TopBottomConditionalFormatType;
  addFormat(table, {column},
            UnaryConditionalFormatOperator(UnaryConditionalFormatType::Greater,
                                           Formulas::parseExpr("A1*2")));
  addFormat(table, {column},
            BinaryConditionalFormatOperator(BinaryConditionalFormatType::Between,
                                            Formulas::parseExpr("3"), Formulas::parseExpr("A1+1")));
  addFormat(table, {column},
            TextConditionalFormatOperator(TextConditionalFormatType::Contains, "99"));
  addFormat(table, {column},
            TextConditionalFormatOperator(
                TextConditionalFormatType::EndsWith,
                std::make_unique<FormulaSyntaxTree::Expr>(Formulas::parseExpr("A1/2"))));
  addFormat(table, {column},
            AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above));
  addFormat(table, {column}, TopBottomConditionalFormatOperator(Number::Top, 3, false));
  addFormat(table, {column}, TopBottomConditionalFormatOperator(Number::Bottom, 50, true));
  addFormat(table, {column}, TopBottomConditionalFormatOperator(Number::Top, 0, false));
  addUnique({{5, 0, 9, 1}, {7, 0, 8, 1}});
  addFormat(table, {column}, NullaryConditionalFormatOperator(NullaryConditionalFormatType::Today));
  addFormat(table, {column}, holdsAlways());
  ScopedClock const clock(noonOn21November());
  auto const calculator = makeCalculator();
  auto const resolver = calculator.prepare(styles, table);
  CellInfo const cell = table.getCellInfo(7, 0);
  auto const operandsOf = [&](std::size_t format) { return resolver.findOperands(format, cell); };

  EXPECT_TRUE(isNumber(std::get<ArgumentOperand>(operandsOf(0)).value, 14));
  EXPECT_TRUE(isNumber(std::get<BoundsOperand>(operandsOf(1)).lower, 3));
  EXPECT_TRUE(isNumber(std::get<BoundsOperand>(operandsOf(1)).upper, 8));
  EXPECT_EQ(std::get<PatternOperand>(operandsOf(2)).pattern.value(), "99");
  EXPECT_EQ(std::get<PatternOperand>(operandsOf(3)).pattern.value(), "3.5");
  EXPECT_EQ(std::get<MeanOperand>(operandsOf(4)).mean.get(), 149.5);
  EXPECT_EQ(std::get<MeanOperand>(operandsOf(4)).count, cellCount);
  EXPECT_EQ(std::get<ThresholdOperand>(operandsOf(5)).threshold->get(), 297);
  EXPECT_EQ(std::get<ThresholdOperand>(operandsOf(5)).rank, 3U);
  EXPECT_EQ(std::get<ThresholdOperand>(operandsOf(6)).threshold->get(), 149);
  EXPECT_EQ(std::get<ThresholdOperand>(operandsOf(6)).rank, 150U);
  EXPECT_FALSE(std::get<ThresholdOperand>(operandsOf(7)).threshold);
  EXPECT_EQ(std::get<ThresholdOperand>(operandsOf(7)).rank, 0U);
  EXPECT_EQ(std::get<OccurrenceOperand>(operandsOf(8)).count, 2U);
  EXPECT_EQ(std::get<OccurrenceOperand>(operandsOf(8)).first.value(), cell.getCellIndex());
  EXPECT_EQ(std::get<PeriodOperand>(operandsOf(9)).first, 46347);
  EXPECT_TRUE(std::holds_alternative<std::monostate>(operandsOf(10)));
  EXPECT_THROW(static_cast<void>(operandsOf(11)), std::out_of_range);
}

TEST_F(TableResolverHoldsTest, ThrowsWhereThereIsNoSuchFormat) {
  addFormula("TRUE");
  auto const calculator = makeCalculator();
  auto const resolver = calculator.prepare(styles, table);
  auto const verdict = judge([&] { return resolver.holds(1, table.getCellInfo(0, 0)); });
  EXPECT_EQ(
      verdict,
      (Verdict{.thrown = typeid(std::out_of_range),
               .message = "there is no conditional format with the index 1; the table has 1"}));
}

TEST_F(TableResolverHoldsTest, RefusesThePositionsThatOperatorsRefuseAlsoWithAKnownArgument) {
  addFormula("TRUE");
  addFormula("A1>SUM($A$1:$A$9)");
  addFormat(
      table, {column},
      UnaryConditionalFormatOperator(UnaryConditionalFormatType::Equal, Formulas::parseExpr("5")));
  addFormat(table, {column},
            BinaryConditionalFormatOperator(BinaryConditionalFormatType::Between,
                                            Formulas::parseExpr("1"), Formulas::parseExpr("2")));
  addFormat(table, {column},
            TextConditionalFormatOperator(
                TextConditionalFormatType::Contains,
                std::make_unique<FormulaSyntaxTree::Expr>(Formulas::parseExpr("\"a\""))));
  auto const calculator = makeCalculator();
  auto const resolver = calculator.prepare(styles, table);
  auto const& formatRefs = calculator.getConditionalFormatRefs(table);
  PlainValueContextProvider const provider(table);
  for (std::size_t format = 0; format < formatRefs.size(); ++format) {
    auto const expectRefused = [&](unsigned long row, unsigned long farColumn) {
      // Whether or not the caller has a cell for the position.
      CellInfo const cell(table, CellIndex(RowIndex(row), ColumnIndex(farColumn)),
                          table.findCell(0, 0));
      auto const verdict = judge([&] { return resolver.holds(format, cell); });
      EXPECT_EQ(verdict.thrown, typeid(BadNumCastError)) << format;
      EXPECT_EQ(verdict,
                judge([&] { return resolver.holds(format, table.getCellInfo(row, farColumn)); }));
      EXPECT_EQ(verdict, judgeByOperator(provider, formatRefs[format], cell)) << format;
    };
    expectRefused(1UL << 31U, 0);
    static_cast<void>(resolver.holds(format, table.getCellInfo(1, 0)));
    expectRefused(1UL << 31U, 0);
    expectRefused(0, 1UL << 31U);
    expectRefused(1UL << 63U, 0);
  }
}

TEST_F(TableResolverHoldsTest, SeesTheMomentThatItsCallerPinnedOrOneOfItsOwn) {
  table.setValue(0, 0, number(46347));  // 21 November 2026
  addFormat(table, {column}, NullaryConditionalFormatOperator(NullaryConditionalFormatType::Today));
  addFormula("AND(A1=TODAY(),TODAY()=46347,INT(NOW())=46347)");
  auto const calculator = makeCalculator();
  auto const resolver = calculator.prepare(styles, table);
  CellInfo const cell = table.getCellInfo(0, 0);
  for (std::size_t const format : {0U, 1U}) {
    ScopedClock const clock(std::make_shared<RunningClock>());
    EXPECT_TRUE(resolver.holds(format, cell)) << "the clock is read once";
    EXPECT_FALSE(resolver.holds(format, cell)) << "the next call is a day later";
    PinnedMoment const pinned(noonOn21November());
    EXPECT_TRUE(resolver.holds(format, cell));
    EXPECT_TRUE(resolver.holds(format, cell));
  }
}

using TableResolverHoldsDeathTest = TableResolverHoldsTest;

TEST_F(TableResolverHoldsDeathTest, StopsWhereTheOperatorWould) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  table.setValue(0, 0, number(std::numeric_limits<double>::quiet_NaN()));
  addUnique({{0, 0, 2, 1}});
  addFormat(table, {},
            UnaryConditionalFormatOperator(UnaryConditionalFormatType::FormulaIsTrue,
                                           Formulas::parseExpr("TRUE")));
  addFormat(table, {column},
            TextConditionalFormatOperator(TextConditionalFormatType::Contains,
                                          std::unique_ptr<FormulaSyntaxTree::Expr>()));
  auto const calculator = makeCalculator();
  auto const resolver = calculator.prepare(styles, table);
  auto const ask = [&](std::size_t format, unsigned long row) {
    static_cast<void>(resolver.holds(format, table.getCellInfo(row, 0)));
  };
  char const* const unknownValue =
      "CndFrmt_UniquenessOperator:62: assertion failed: \"valueCount != 0\"";
  EXPECT_DEATH(ask(0, 0), unknownValue) << "a number that is none";
  EXPECT_DEATH(ask(0, 2), unknownValue) << "a value that is not in the ranges";
  EXPECT_DEATH(ask(1, 0),
               "/code/ConditionalFormatters/CndFrmt_OperatorsFactory:57: assertion failed: "
               "\"!ranges.empty\\(\\)\"");
  EXPECT_DEATH(ask(2, 0), "/code/Utils/Public/Ptr/PtrUtils:254: assertion failed: \"plainPtr\"");
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
