#include "ConditionalFormatters/WholeTable/CndFrmt_ValueCondition.h"

namespace Zorv::ConditionalFormatters {

bool ValueCondition::holdsFor(DOM::CellInfo const& /*cellInfo*/, FormulaValueData const& data,
                              Formulas::EvaluationSession& /*session*/) const {
  return (*_operator)(data);
}

void ValueCondition::make(unsigned /*threadCount*/) const {
  _operator = _sources.factory.create(_formatRef);
}

}  // namespace Zorv::ConditionalFormatters
