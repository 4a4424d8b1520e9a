#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceCondition.h"

#include <functional>
#include <memory>

#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/Operators/CndFrmt_ValueCollectors.h"
#include "ConditionalFormatters/Predicates/CndFrmt_Occurrence.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceBlock.h"
#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::ConditionalFormatters {

bool OccurrenceCondition::holds(TestedCell const& cell, PassContext& pass) const {
  FormulaValue const& value = cell.data.value;
  if (FormulaModel::isFormulaEmpty(value)) {
    return false;
  }
  if (!cell.isCollected || !isComparable(value)) {
    return askOperator(cell.data);
  }
  return satisfiesOccurrence(_record.type,
                             _operands.isRepeated(cell.data.cellIndex, pass.getResources()));
}

ConditionOperands OccurrenceCondition::findOperands(TestedCell const& cell,
                                                    PassContext& /*pass*/) const {
  FormulaModel::FormulaValuesComarator<std::equal_to> const isEqual;
  OccurrenceOperand operand;
  if (FormulaModel::isFormulaEmpty(cell.data.value)) {
    return operand;
  }
  for (TableRange const& range : _operands.getRanges()) {
    auto const [begin, end] = _operands.getTable().getRangeIterators(range);
    for (auto other = begin; other != end; ++other) {
      DOM::CellInfo const cellInfo = other.getCellInfo();
      if (isEqual(_operands.getProvider().getCellValue(cellInfo), cell.data.value)) {
        operand.first = operand.count == 0 ? cellInfo.getCellIndex() : operand.first;
        ++operand.count;
      }
    }
  }
  return operand;
}

/// The value is not among the collected ones: it is of no cell of the ranges, or it equals nothing.
bool OccurrenceCondition::askOperator(FormulaValueData const& data) const {
  auto const create = [&] {
    return std::make_unique<UniquenessOperator const>(
        _record,
        OperatorsFactory(_operands.getProvider(), _operands.getTable())
            .collectValuesFromRange<FormulaValueMultiset>(_operands.getRanges(), insertNonEmpty));
  };
  return _operator.getOrCreate(_creation, create)(data);
}

}  // namespace Zorv::ConditionalFormatters
