#include "tool/SheetConditions.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "Formulas/ParseExpr.h"
#include "Utils/Exceptions.h"
#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::Tool {
namespace {

using Rules = std::vector<Workbook::Rule const*>;

constexpr unsigned long failingRow = 4;

/// Has no value for one row.
class FailingProvider final : public TestSupport::ForwardingValueContextProvider {
public:
  explicit FailingProvider(DOM::Table const& table)
      : ForwardingValueContextProvider(
            std::make_unique<TestSupport::PlainValueContextProvider>(table)) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    if (cellInfo.getRowIndex() == failingRow) {
      throw BaseRuntimeError("no value");
    }
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }
};

/// The numbers 0 to 9 below each other, and rules of falling priority: greater than 5, which stops;
/// greater than 2; less than 9.
class SheetConditionsTest : public testing::Test {
protected:
  SheetConditionsTest() : _calculator(std::make_unique<FailingProvider>(_table)) {
    for (unsigned long row = 0; row < 10; ++row) {
      _table.setValue(row, 0, TestSupport::number(static_cast<double>(row)));
    }
    using Type = DOM::UnaryConditionalFormatType;
    addRule({0, 0, 10, 1}, Type::Greater, "5", true);
    addRule({0, 0, 10, 1}, Type::Greater, "2", false);
    addRule({0, 0, 8, 1}, Type::Less, "9", false);
    for (auto const* rule : {&_rules[2], &_rules[0], &_rules[1]}) {
      _given.push_back(rule);
    }
    _resolver.emplace(_calculator.prepare(_styles, _table));
    _conditions.emplace(
        *_resolver, _calculator.getConditionalFormatRefs(_table), _given,
        [this](Workbook::Rule const& rule, DOM::CellInfo const& cell, char const* problem) {
          _failures.push_back(std::to_string(rule.number) + " at " +
                              std::to_string(cell.getRowIndex()) + ": " + problem);
        });
  }

  void addRule(TableRange const& range, DOM::UnaryConditionalFormatType type,
               std::string const& formula, bool stop) {
    _table.addConditionalFormat(std::make_unique<DOM::ConditionalFormat const>(
        std::vector{_table.toRangeByID(range)},
        DOM::UnaryConditionalFormatOperator(type, Formulas::parseExpr(formula)), UUID(), stop));
    auto& rule = _rules[_count];
    rule.number = _count++;
    rule.format = _table.getLiveConditionalFormats().back().get();
  }

  DOM::Table _table;
  DOM::Styles _styles;
  ConditionalFormatters::ConditionalFormattingPropsCalculator const _calculator;
  Workbook::Rule _rules[3];
  std::size_t _count = 0;
  Rules _given;
  std::vector<std::string> _failures;
  std::optional<ConditionalFormatters::TableResolver> _resolver;
  std::optional<SheetConditions> _conditions;
};

TEST_F(SheetConditionsTest, AskOneRuleWhateverTheOthersSay) {
  auto const holds = [&](std::size_t rule, unsigned long row) {
    return _conditions->holds(_rules[rule], _table.getCellInfo(row, 0));
  };
  EXPECT_EQ(holds(0, 7), true);
  EXPECT_EQ(holds(1, 7), true) << "after a rule that stops";
  EXPECT_EQ(holds(2, 8), true) << "outside the rule's range";
  EXPECT_EQ(holds(1, 2), false);
  EXPECT_TRUE(_failures.empty());
}

TEST_F(SheetConditionsTest, TellOfEachCellThatFailsAndAnswerForTheOthers) {
  for (unsigned long row = 3; row < 6; ++row) {
    EXPECT_EQ(_conditions->holds(_rules[1], _table.getCellInfo(row, 0)),
              row == failingRow ? std::nullopt : std::optional(true));
  }
  EXPECT_EQ(_failures, std::vector<std::string>{"1 at 4: no value"});
}

TEST_F(SheetConditionsTest, FindTheRulesThatDecideUpToTheOneThatStops) {
  auto const findDeciding = [&](unsigned long row) {
    return _conditions->findDeciding(_table.getCellInfo(row, 0));
  };
  EXPECT_EQ(findDeciding(1), (Rules{&_rules[2]}));
  EXPECT_EQ(findDeciding(3), (Rules{&_rules[1], &_rules[2]}));
  EXPECT_EQ(findDeciding(7), (Rules{&_rules[0]}));
  EXPECT_EQ(findDeciding(20), Rules());
  EXPECT_TRUE(_failures.empty());
  EXPECT_EQ(findDeciding(failingRow), std::nullopt);
  EXPECT_EQ(_failures, std::vector<std::string>{"0 at 4: no value"});
}

TEST_F(SheetConditionsTest, KnowTheRuleOfEachFormatByItsPlace) {
  for (std::size_t place = 0; place < 3; ++place) {
    EXPECT_EQ(&_conditions->ruleOf(place), &_rules[place]);
  }
}

}  // namespace
}  // namespace Zorv::Tool
