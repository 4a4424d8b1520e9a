#include "ConditionalFormatters/WholeTable/CndFrmt_VerdictScope.h"

#include <boost/variant/get.hpp>

#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/PositionDependence.h"

namespace Zorv::ConditionalFormatters {

VerdictScope findVerdictScope(DOM::ConditionalFormat const& format) {
  // Conditions of other kinds test the value of the cell.
  auto const* const record = boost::get<DOM::UnaryConditionalFormatOperator>(&format.getOperator());
  if (record == nullptr || record->getType() != DOM::UnaryConditionalFormatType::FormulaIsTrue) {
    return VerdictScope::Cell;
  }
  auto const position = Formulas::findPositionDependence(record->getArgument());
  if (!position.column) {
    return VerdictScope::Row;
  }
  return position.row ? VerdictScope::Cell : VerdictScope::Column;
}

}  // namespace Zorv::ConditionalFormatters
