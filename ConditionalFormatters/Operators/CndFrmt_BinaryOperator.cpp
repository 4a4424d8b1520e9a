#include "ConditionalFormatters/Operators/CndFrmt_BinaryOperator.h"

#include "ConditionalFormatters/Operators/CndFrmt_NeverHolds.h"
#include "ConditionalFormatters/Operators/CndFrmt_SameKindComparison.h"
#include "DOM/ConditionalFormatOperator.h"

namespace Zorv::ConditionalFormatters {

namespace {

bool isBetween(FormulaValue const& cellValue, boost::optional<FormulaValue> const& first,
               boost::optional<FormulaValue> const& second) {
  return (!first || IsGreaterOrEqual()(cellValue, *first)) &&
         (!second || IsLessOrEqual()(cellValue, *second));
}

// Not the opposite of isBetween(): values of different kinds fail both.
bool isNotBetween(FormulaValue const& cellValue, boost::optional<FormulaValue> const& first,
                  boost::optional<FormulaValue> const& second) {
  return !first || IsLess()(cellValue, *first) || !second || IsGreater()(cellValue, *second);
}

using Test = bool (*)(FormulaValue const& cellValue, boost::optional<FormulaValue> const& first,
                      boost::optional<FormulaValue> const& second);

Test chooseTest(DOM::BinaryConditionalFormatType type) noexcept {
  switch (type) {
    case DOM::BinaryConditionalFormatType::Between:
      return isBetween;
    case DOM::BinaryConditionalFormatType::NotBetween:
      return isNotBetween;
  }
  return neverHolds;
}

}  // namespace

BinaryOperator::BinaryOperator(DOM::BinaryConditionalFormatOperator const& record,
                               DOM::Table const& table,
                               Formulas::ContextProvider const& contextProvider, CellIndex baseCell)
    : _calculator(table, contextProvider, baseCell),
      _firstArgument(record.getFirstArgument()),
      _secondArgument(record.getSecondArgument()),
      _test(chooseTest(record.getType())) {}

bool BinaryOperator::operator()(FormulaValueData const& data) const {
  return judge(data, [&](std::size_t, DOM::FormulaSyntaxTree::Expr const& argument) {
    return _calculator.calculate(argument, data.cellIndex);
  });
}

}  // namespace Zorv::ConditionalFormatters
