#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <typeinfo>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"
#include "ConditionalFormatters/Operators/CndFrmt_UnaryOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_UniquenessOperator.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaException.h"
#include "Formulas/ParseExpr.h"
#include "OfficeUtils/Clock.h"
#include "Utils/Exceptions.h"
#include "support/Documents.h"
#include "support/Journal.h"
#include "support/RecordingContexts.h"
#include "support/RecordingValueContextProvider.h"
#include "support/Values.h"

// The library and the host as shared objects, with the real formula engine.
namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using FormulaModel::FormulaErrorCode;
using Formulas::parseExpr;

constexpr TableRange columnA{0, 0, 5, 1};
constexpr TableRange columnC{0, 2, 5, 3};
constexpr TableRange columnD{0, 3, 5, 4};
constexpr TableRange columnE{0, 4, 5, 5};
constexpr double today = 46347;  // 21 November 2026

class ApiTest : public testing::Test {
protected:
  std::unique_ptr<RecordingValueContextProvider> makeProvider() {
    return std::make_unique<RecordingValueContextProvider>(contextProvider, journal);
  }

  /// A format whose style sets what the function sets.
  void add(TableRange const& range, DOM::ConditionalFormatOperator condition,
           std::function<void(DOM::RunProps&)> const& set, bool stop = false) {
    UUID const uuid = UUID::generate();
    addStyle(styles, uuid).setRunProps(makeProps<DOM::RunProps>(set));
    addFormat(table, {range}, std::move(condition), uuid, stop);
  }

  void fillSheet();
  void addFormatsOfAllKinds();

  /// The style of every cell of the sheet that has one, in words.
  [[nodiscard]] std::map<std::string, std::string> describeAll();

  DOM::Table table;
  DOM::Styles styles;
  Journal journal;
  RecordingContextProvider contextProvider{table, journal};
  OfficeUtils::ScopedClock const clock{std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) +
                                       std::chrono::hours(12)};
};

/// Properties that a style sets, in words.
std::string describe(DOM::CellStyle const& style) {
  std::string words;
  DOM::RunProps const& props = *style.getRunProps();
  words += props.bold.value_or(false) ? "bold " : "";
  words += props.italic.value_or(false) ? "italic " : "";
  words += props.strikethrough.value_or(false) ? "strikethrough " : "";
  words += props.underline ? "underline " : "";
  words += props.fontName ? *props.fontName + " " : "";
  words += props.fontSize ? std::to_string(static_cast<int>(*props.fontSize)) + " " : "";
  return words;
}

std::map<std::string, std::string> ApiTest::describeAll() {
  std::map<std::string, std::string> words;
  ConditionalFormattingPropsCalculator const calculator(makeProvider());
  for (unsigned long row = 0; row < 6; ++row) {
    for (unsigned long column = 0; column < 6; ++column) {
      auto const cell = table.getCellInfo(row, column);
      auto const style = calculator.resolve(styles, cell);
      EXPECT_EQ(calculator.getConditionalFormatCellStyle(styles, cell), style);
      EXPECT_EQ(calculator.getConditionalFormatCellStyle(styles, cell), style);
      if (style) {
        words[static_cast<char>('A' + column) + std::to_string(row + 1)] = describe(**style);
      }
    }
  }
  return words;
}

//       A    B    C          D              E
//  1    10   20   apple pie  today 0:00     1
//  2    25   20   plum       yesterday      2
//  3    25   20   pineapple  a week ago     3
//  4    40   20              tomorrow       4
//  5    5    20   #N/A       a text         10
void ApiTest::fillSheet() {
  double const amounts[] = {10, 25, 25, 40, 5};
  double const scores[] = {1, 2, 3, 4, 10};
  for (unsigned long row = 0; row < 5; ++row) {
    table.setValue(row, 0, number(amounts[row]));
    table.setValue(row, 1, number(20));
    table.setValue(row, 4, number(scores[row]));
  }
  table.setValue(0, 2, text("apple pie"));
  table.setValue(1, 2, text("plum"));
  table.setValue(2, 2, text("pineapple"));
  table.setValue(4, 2, error(FormulaErrorCode::NotAvailable));
  table.setValue(0, 3, number(today));
  table.setValue(1, 3, number(today - 0.25));
  table.setValue(2, 3, number(today - 7));
  table.setValue(3, 3, number(today + 1));
  table.setValue(4, 3, text("some day"));
}

void ApiTest::addFormatsOfAllKinds() {
  using namespace DOM;
  add(columnA,
      UnaryConditionalFormatOperator(UnaryConditionalFormatType::FormulaIsTrue,
                                     parseExpr("$A1>B1")),
      [](RunProps& props) { props.bold = true; });
  add(columnA, UniquenessConditionalFormatOperator{UniquenessType::Duplicate},
      [](RunProps& props) { props.italic = true; });
  add(
      columnA,
      BinaryConditionalFormatOperator(BinaryConditionalFormatType::Between, parseExpr("5"),
                                      parseExpr("B1/2")),
      [](RunProps& props) { props.fontName = "Serif"; }, true);
  add(columnA, TopBottomConditionalFormatOperator(TopBottomConditionalFormatType::Top, 1, false),
      [](RunProps& props) { props.fontSize = 20; });
  add(columnA,
      UnaryConditionalFormatOperator(UnaryConditionalFormatType::GreaterOrEqual,
                                     parseExpr("B1-20")),
      [](RunProps& props) { props.fontSize = 8; });
  add(columnC,
      TextConditionalFormatOperator(
          TextConditionalFormatType::Contains,
          std::make_unique<FormulaSyntaxTree::Expr>(parseExpr("LEFT(\"applesauce\",5)"))),
      [](RunProps& props) { props.underline = Underline::Single; });
  add(columnC,
      TextConditionalFormatOperator(TextConditionalFormatType::BeginsWith, std::string("pine")),
      [](RunProps& props) { props.bold = true; });
  add(columnC, NullaryConditionalFormatOperator(NullaryConditionalFormatType::Errors),
      [](RunProps& props) { props.strikethrough = true; });
  add(columnC, NullaryConditionalFormatOperator(NullaryConditionalFormatType::Blanks),
      [](RunProps& props) { props.italic = true; });
  add(columnD, NullaryConditionalFormatOperator(NullaryConditionalFormatType::Yesterday),
      [](RunProps& props) { props.italic = true; });
  add(columnD, NullaryConditionalFormatOperator(NullaryConditionalFormatType::Last7Days),
      [](RunProps& props) { props.bold = true; });
  add(columnE, AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above),
      [](RunProps& props) { props.bold = true; });
}

TEST_F(ApiTest, AHandComputedSheetWithAllKindsOfConditions) {
  fillSheet();
  addFormatsOfAllKinds();
  std::map<std::string, std::string> const expected{
      {"A1", "Serif "},  // 5 <= 10 <= 20/2, and nothing after it
      {"A2", "bold italic 8 "},  {"A3", "bold italic 8 "},
      {"A4", "bold 20 "},  // the top one before the general rule
      {"A5", "Serif "},          {"C1", "underline "},
      {"C3", "bold underline "}, {"C4", "italic "},  // there is no cell, and it is blank
      {"C5", "strikethrough "},  {"D1", "bold "},
      {"D2", "bold italic "},    {"E5", "bold "},  // the mean is 4
  };
  EXPECT_EQ(describeAll(), expected);
}

TEST_F(ApiTest, FormulasFollowTheCellAlsoWhereRangesLieApart) {
  fillSheet();
  // Written relative to A2: the corner of both ranges together.
  addFormat(table, {{1, 2, 3, 3}, {3, 0, 5, 1}},
            DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::FormulaIsTrue,
                                                parseExpr("OR(A2=40,A2=\"plum\")")),
            makeUUID(1));
  addStyle(styles, makeUUID(1)).setRunProps(makeProps<DOM::RunProps>([](DOM::RunProps& props) {
    props.bold = true;
  }));
  std::map<std::string, std::string> const expected{{"A4", "bold "}, {"C2", "bold "}};
  EXPECT_EQ(describeAll(), expected);
}

TEST_F(ApiTest, AConditionThatCannotBeCastDoesNotHold) {
  // The cast throws in the host, and the library catches it by its type.
  table.setValue(0, 0, number(1));
  for (char const* formula : {"\"neither\"", "1/0", "\"\""}) {
    DOM::UnaryConditionalFormatOperator const record(DOM::UnaryConditionalFormatType::FormulaIsTrue,
                                                     parseExpr(formula));
    UnaryOperator const condition(record, table, contextProvider,
                                  CellIndex(RowIndex(0), ColumnIndex(0)));
    EXPECT_FALSE(condition({number(1), CellIndex(RowIndex(0), ColumnIndex(0))})) << formula;
  }
}

TEST_F(ApiTest, ExceptionsKeepTheirTypesOnTheirWayThroughTheLibraries) {
  table.setValue(0, 0, number(1));
  auto owned = makeProvider();
  auto& provider = *owned;
  ConditionalFormattingPropsCalculator const calculator(std::move(owned));
  auto const cell = table.getCellInfo(0, 0);
  addFormat(table, {columnA}, holdsAlways());
  addFormat(
      table, {columnA},
      DOM::NullaryConditionalFormatOperator(static_cast<DOM::NullaryConditionalFormatType>(200)));
  EXPECT_THROW((void)calculator.resolve(styles, cell), std::bad_function_call);

  struct OwnError : std::exception {};
  provider.answerBy([](DOM::CellInfo const&) -> FormulaValue { throw OwnError(); });
  EXPECT_THROW((void)calculator.getConditionalFormatCellStyle(styles, cell), OwnError);
  provider.answerBy([](DOM::CellInfo const&) -> FormulaValue {
    throw FormulaModel::FormulaException("no value");
  });
  EXPECT_THROW((void)calculator.resolve(styles, cell), FormulaModel::FormulaException);
  EXPECT_THROW((void)calculator.resolve(styles, cell), BaseRuntimeError);

  FormulaExprCalculator const formulas(table, contextProvider,
                                       CellIndex(RowIndex(0), ColumnIndex(0)));
  EXPECT_THROW(
      (void)formulas.calculate(parseExpr("1"), CellIndex(RowIndex(2147483648), ColumnIndex(0))),
      BadNumCastError);
}

TEST_F(ApiTest, TypesOfOperatorsAreKnownAcrossTheLibraries) {
  auto const provider = makeProvider();
  OperatorsFactory const factory(*provider, table);
  DOM::ConditionalFormat const format(
      {}, DOM::UniquenessConditionalFormatOperator{DOM::UniquenessType::Unique}, UUID());
  std::unique_ptr<Operator> const condition = factory.create({{}, std::cref(format)});
  Operator const& reference = *condition;
  EXPECT_EQ(typeid(reference), typeid(UniquenessOperator));
  EXPECT_NE(dynamic_cast<UniquenessOperator const*>(condition.get()), nullptr);
  EXPECT_EQ(dynamic_cast<UnaryOperator const*>(condition.get()), nullptr);
}

TEST_F(ApiTest, ValuesMayBeCollectedAndHashedOutsideTheLibrary) {
  fillSheet();
  auto const provider = makeProvider();
  OperatorsFactory const factory(*provider, table);
  auto const values = factory.collectValuesFromRange<FormulaValueMultiset>(
      {columnA, columnC}, [](FormulaValueMultiset& container, FormulaValue value) {
        container.insert(std::move(value));
      });
  EXPECT_EQ(values.size(), 9U);
  EXPECT_EQ(values.count(number(25)), 2U);
  EXPECT_EQ(values.count(text("plum")), 1U);
}

TEST_F(ApiTest, ResultsOutliveEverything) {
  DOM::SharedCellStylePtr style;
  {
    fillSheet();
    addFormatsOfAllKinds();
    ConditionalFormattingPropsCalculator const calculator(makeProvider());
    style = calculator.getConditionalFormatCellStyle(styles, table.getCellInfo(1, 0));
    styles.getTableStyles().clear();
  }
  ASSERT_NE(style, nullptr);
  EXPECT_EQ(describe(**style), "bold italic 8 ");
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
