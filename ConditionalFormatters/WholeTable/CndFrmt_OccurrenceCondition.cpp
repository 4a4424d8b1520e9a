#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceCondition.h"

#include <functional>
#include <memory>

#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/Operators/CndFrmt_ValueCollectors.h"
#include "ConditionalFormatters/Predicates/CndFrmt_Occurrence.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceBlock.h"
#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// As many walks over the ranges take about as long as to make the index.
constexpr unsigned mostWalks = 24;

}  // namespace

bool OccurrenceCondition::holds(TestedCell const& cell, PassContext& pass) const {
  FormulaValue const& value = cell.data.value;
  if (cell.isCollected && isComparable(value)) {
    return satisfiesOccurrence(_record.type,
                               _operands.isRepeated(cell.data.cellIndex, pass.getResources()));
  }
  return !FormulaModel::isFormulaEmpty(value) && askOperator(cell.data);
}

ConditionOperands OccurrenceCondition::findOperands(TestedCell const& cell,
                                                    PassContext& pass) const {
  // NaN equals nothing, itself included.
  return isComparable(cell.data.value) ? findOccurrences(cell, pass.getResources())
                                       : OccurrenceOperand();
}

OccurrenceOperand OccurrenceCondition::findOccurrences(TestedCell const& cell,
                                                       PassResources const& resources) const {
  FormulaValue const& value = cell.data.value;
  if (!cell.isCollected || _walkCount.load(std::memory_order_relaxed) < mostWalks) {
    _walkCount.fetch_add(1, std::memory_order_relaxed);
    return countOccurrences(_operands, value, resources);
  }
  OccurrenceIndex const& index = _index.getOrCreate(
      _creation, [&] { return std::make_unique<OccurrenceIndex const>(_operands, resources); });
  OccurrenceOperand const* const repeated = index.find(value);
  return repeated != nullptr ? *repeated : OccurrenceOperand{1, cell.data.cellIndex};
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
