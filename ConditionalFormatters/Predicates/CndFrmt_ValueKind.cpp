#include "ConditionalFormatters/Predicates/CndFrmt_ValueKind.h"

#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::ConditionalFormatters {

ValueKindTest findValueKindTest(DOM::NullaryConditionalFormatType type) noexcept {
  using Type = DOM::NullaryConditionalFormatType;
  switch (type) {
    case Type::Blanks:
      return FormulaModel::isFormulaEmpty;
    case Type::NoBlanks:
      return [](FormulaValue const& value) { return !FormulaModel::isFormulaEmpty(value); };
    case Type::Errors:
      return FormulaModel::isFormulaError;
    case Type::NoErrors:
      return [](FormulaValue const& value) { return !FormulaModel::isFormulaError(value); };
    default:
      return nullptr;
  }
}

}  // namespace Zorv::ConditionalFormatters
