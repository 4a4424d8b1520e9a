#include "ConditionalFormatters/WholeTable/CndFrmt_UniquenessCondition.h"

#include <cmath>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/WholeTable/CndFrmt_RepeatedCells.h"
#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::ConditionalFormatters {

namespace {

bool isNaN(FormulaValue const& value) noexcept {
  auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value);
  return number != nullptr && std::isnan(number->value.get());
}

}  // namespace

bool UniquenessCondition::holdsFor(DOM::CellInfo const& cellInfo, FormulaValueData const& data,
                                   Formulas::EvaluationSession& /*session*/) const {
  if (FormulaModel::isFormulaEmpty(data.value)) {
    return false;
  }
  if (cellInfo.getCell() == nullptr || isNaN(data.value)) {
    return askOperator(data);
  }
  bool const isRepeated = _repeated.contains(cellInfo.getRowIndex(), cellInfo.getColIndex());
  switch (_type) {
    case DOM::UniquenessType::Duplicate:
      return isRepeated;
    case DOM::UniquenessType::Unique:
      return !isRepeated;
    default:
      return false;
  }
}

void UniquenessCondition::make(unsigned threadCount) const {
  _repeated = findRepeatedCells({_sources.provider, _sources.table, _formatRef.first, threadCount});
}

/// Nothing of the value was collected: it is no value of a cell, or it equals nothing.
bool UniquenessCondition::askOperator(FormulaValueData const& data) const {
  std::lock_guard const lock(_mutex);
  if (!_operator) {
    _operator = _sources.factory.create(_formatRef);
  }
  return (*_operator)(data);
}

}  // namespace Zorv::ConditionalFormatters
