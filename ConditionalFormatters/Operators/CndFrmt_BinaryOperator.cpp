#include "ConditionalFormatters/Operators/CndFrmt_BinaryOperator.h"

#include "ConditionalFormatters/Predicates/CndFrmt_Between.h"
#include "DOM/ConditionalFormatOperator.h"

namespace Zorv::ConditionalFormatters {

BinaryOperator::BinaryOperator(DOM::BinaryConditionalFormatOperator const& record,
                               DOM::Table const& table,
                               Formulas::ContextProvider const& contextProvider, CellIndex baseCell)
    : _calculator(table, contextProvider, baseCell),
      _firstArgument(record.getFirstArgument()),
      _secondArgument(record.getSecondArgument()),
      _test(findBoundsTest(record.getType())) {}

bool BinaryOperator::operator()(FormulaValueData const& data) const {
  auto const second = _calculator.calculate(_secondArgument, data.cellIndex);
  auto const first = _calculator.calculate(_firstArgument, data.cellIndex);
  return _test(data.value, first, second);
}

}  // namespace Zorv::ConditionalFormatters
