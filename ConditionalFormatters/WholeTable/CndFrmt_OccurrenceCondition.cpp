#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceCondition.h"

#include <cmath>
#include <functional>
#include <memory>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/Operators/CndFrmt_ValueCollectors.h"
#include "ConditionalFormatters/Predicates/CndFrmt_Occurrence.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_RepeatedCells.h"
#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::ConditionalFormatters {

namespace {

bool isNaN(FormulaValue const& value) noexcept {
  auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value);
  return number != nullptr && std::isnan(number->value.get());
}

}  // namespace

OccurrenceCondition::OccurrenceCondition(DOM::UniquenessConditionalFormatOperator const& record,
                                         CollectedRanges const& from)
    : _record(record),
      _provider(from.provider),
      _table(from.table),
      _ranges(from.ranges),
      _repeated(findRepeatedCells(from)) {}

bool OccurrenceCondition::holds(TestedCell const& cell, PassContext& /*pass*/) const {
  FormulaValue const& value = cell.data.value;
  if (FormulaModel::isFormulaEmpty(value)) {
    return false;
  }
  if (!cell.isCollected || isNaN(value)) {
    return askOperator(cell.data);
  }
  auto const& index = cell.data.cellIndex;
  return satisfiesOccurrence(_record.type,
                             _repeated.contains(index.getRow().get(), index.getColumn().get()));
}

ConditionOperands OccurrenceCondition::findOperands(TestedCell const& cell,
                                                    PassContext& /*pass*/) const {
  FormulaModel::FormulaValuesComarator<std::equal_to> const isEqual;
  OccurrenceOperand operand;
  if (FormulaModel::isFormulaEmpty(cell.data.value)) {
    return operand;
  }
  for (TableRange const& range : _ranges) {
    auto const [begin, end] = _table.getRangeIterators(range);
    for (auto other = begin; other != end; ++other) {
      DOM::CellInfo const cellInfo = other.getCellInfo();
      if (isEqual(_provider.getCellValue(cellInfo), cell.data.value)) {
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
        _record, OperatorsFactory(_provider, _table)
                     .collectValuesFromRange<FormulaValueMultiset>(_ranges, insertNonEmpty));
  };
  return _operator.getOrCreate(_creation, create)(data);
}

}  // namespace Zorv::ConditionalFormatters
