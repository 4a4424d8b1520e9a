#include "ConditionalFormatters/WholeTable/CndFrmt_CellExplainer.h"

#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

#include "ConditionalFormatters/CalculatorTest.h"
#include "Utils/WorkBudget.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAre;
using testing::IsEmpty;

class CellExplainerTest : public CalculatorTest {
protected:
  CellExplainerTest() { host.table.setValue(0, 0, number(7)); }

  [[nodiscard]] CellExplanation explain(unsigned long row = 0, unsigned long column = 0,
                                        WorkBudget* budget = nullptr) const {
    return calculator->prepare(host.styles, host.table)
        .explain(host.table.getCellInfo(row, column), budget);
  }

  static std::vector<FormatOutcome> outcomesOf(CellExplanation const& explanation) {
    std::vector<FormatOutcome> outcomes;
    for (FormatExplanation const& format : explanation.formats) {
      outcomes.push_back(format.outcome);
    }
    return outcomes;
  }

  /// `bold`, or `bold<0` for one that the format 0 has taken.
  static std::vector<std::string> propertiesOf(FormatExplanation const& format) {
    std::vector<std::string> properties;
    for (PropertyShare const& share : format.properties) {
      properties.emplace_back(share.name);
      if (share.takenBy) {
        properties.back() += "<" + std::to_string(*share.takenBy);
      }
    }
    return properties;
  }

  static std::string textOf(boost::optional<FormulaValue> const& value) {
    return value ? boost::get<FormulaModel::FormulaString>(*value).value : "no value";
  }

  static DOM::ConditionalFormatOperator equals(Expr const& argument) {
    return DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::Equal, argument);
  }

  static constexpr TableRange firstCell{0, 0, 1, 1};
  static constexpr TableRange elsewhere{5, 5, 6, 6};
};

TEST_F(CellExplainerTest, SaysOfEveryFormatWhatBecameOfIt) {
  addFormat(host.table, {elsewhere}, holdsAlways(), addFont(1, true));
  addFormat(host.table, {firstCell}, holdsNever(), addFont(2, true));
  addFormat(host.table, {elsewhere, firstCell}, holdsAlways(), addFont(3, true), true);
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(4, true));
  addFormat(host.table, {}, holdsAlways(), addFont(5, true));
  auto const explanation = explain();
  EXPECT_THAT(
      outcomesOf(explanation),
      ElementsAre(FormatOutcome::NotOnThisCell, FormatOutcome::DoesNotHold, FormatOutcome::Holds,
                  FormatOutcome::NotReached, FormatOutcome::NotOnThisCell));
  EXPECT_EQ(explanation.formats[3].endedBy.value(), 2U);
  for (std::size_t const format : {0U, 1U, 2U, 4U}) {
    EXPECT_FALSE(explanation.formats[format].endedBy) << format;
    EXPECT_EQ(explanation.formats[format].failure, nullptr) << format;
  }
}

TEST_F(CellExplainerTest, GivesTheStyleThatResolveGives) {
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  auto const style = resolve(0, 0);
  ASSERT_NE(style, nullptr);
  EXPECT_EQ(explain().style, style);
  EXPECT_EQ(explain(1, 1).style, nullptr);
}

TEST_F(CellExplainerTest, SaysWhoSetsEachProperty) {
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  addFormat(host.table, {firstCell}, holdsNever(), addFont(2, std::nullopt, 30));
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(3, false, 12));
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(4, std::nullopt, 9, makeUUID(1)));
  addFormat(host.table, {firstCell}, holdsAlways());
  auto const explanation = explain();
  EXPECT_THAT(propertiesOf(explanation.formats[0]), ElementsAre("bold"));
  EXPECT_THAT(propertiesOf(explanation.formats[1]), IsEmpty());
  EXPECT_THAT(propertiesOf(explanation.formats[2]), ElementsAre("fontSize", "bold<0"));
  EXPECT_THAT(propertiesOf(explanation.formats[3]), ElementsAre("fontSize<2", "bold<0"));
  EXPECT_THAT(propertiesOf(explanation.formats[4]), IsEmpty());
}

TEST_F(CellExplainerTest, GivesTheValueAndTheOperandsOfTheTest) {
  Expr const argument = Expr::constant(number(5));
  addFormat(host.table, {firstCell}, equals(argument), addFont(1, true));
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(2, true), true);
  addFormat(host.table, {firstCell}, equals(argument), addFont(3, true));
  provider->answerBy([](DOM::CellInfo const&) { return text("given"); });
  host.engine.answer(text("given"));
  auto const explanation = explain();
  EXPECT_EQ(textOf(explanation.value), "given");
  EXPECT_EQ(textOf(std::get<ArgumentOperand>(explanation.formats[0].operands).value), "given");
  EXPECT_TRUE(std::holds_alternative<std::monostate>(explanation.formats[1].operands));
  EXPECT_TRUE(std::holds_alternative<std::monostate>(explanation.formats[2].operands))
      << "it was not reached";
}

TEST_F(CellExplainerTest, EvaluatesTheFormatsOnTheCellAlone) {
  Expr const argument = Expr::constant(number(5));
  addFormat(host.table, {elsewhere}, equals(argument), addFont(1, true));
  EXPECT_FALSE(explain().value);
  EXPECT_THAT(host.engine.getCalcCalls(), IsEmpty());
  EXPECT_THAT(host.journal.getEntries(), IsEmpty());
}

TEST_F(CellExplainerTest, TellsTheFormatThatFailedAndItsException) {
  Expr const argument = Expr::constant(number(5));
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  addFormat(host.table, {firstCell}, equals(argument), addFont(2, true));
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(3, true));
  host.engine.answerBy([](CalcCall const&) -> Formulas::CalcResult {
    throw std::runtime_error("the engine is out of order");
  });
  auto const explanation = explain();
  EXPECT_THAT(outcomesOf(explanation),
              ElementsAre(FormatOutcome::Holds, FormatOutcome::Failed, FormatOutcome::NotReached));
  EXPECT_EQ(explanation.formats[2].endedBy.value(), 1U);
  EXPECT_EQ(explanation.style, nullptr);
  EXPECT_THAT(propertiesOf(explanation.formats[0]), IsEmpty()) << "the cell has no style";
  EXPECT_THROW(std::rethrow_exception(explanation.formats[1].failure), std::runtime_error);
  EXPECT_TRUE(explanation.value);
}

TEST_F(CellExplainerTest, HasNoValueWhereTheProviderFails) {
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  provider->answerBy(
      [](DOM::CellInfo const&) -> FormulaValue { throw std::runtime_error("no value"); });
  auto const explanation = explain();
  EXPECT_THAT(outcomesOf(explanation), ElementsAre(FormatOutcome::Failed));
  EXPECT_FALSE(explanation.value);
}

TEST_F(CellExplainerTest, ThrowsOnALackOfMemoryAndTheEndOfTheBudget) {
  Expr const argument = Expr::constant(number(5));
  addFormat(host.table, {firstCell}, equals(argument), addFont(1, true));
  host.engine.answerBy([](CalcCall const&) -> Formulas::CalcResult { throw std::bad_alloc(); });
  EXPECT_THROW(static_cast<void>(explain()), std::bad_alloc);
  host.engine.answerBy(
      [](CalcCall const&) -> Formulas::CalcResult { throw WorkBudgetExceeded("too much"); });
  EXPECT_THROW(static_cast<void>(explain()), WorkBudgetExceeded);
}

TEST_F(CellExplainerTest, NamesTheCellRelativeToWhichFormulasAreWritten) {
  addFormat(host.table, {{3, 9, 5, 10}, {7, 2, 8, 4}}, holdsAlways());
  auto const resolver = calculator->prepare(host.styles, host.table);
  CellIndex const base = resolver.getFormulaBaseCell(0);
  EXPECT_EQ(base.getRow().get(), 3U);
  EXPECT_EQ(base.getColumn().get(), 2U);
  EXPECT_THROW(static_cast<void>(resolver.getFormulaBaseCell(1)), std::out_of_range);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
