#include "Formulas/Evaluation/ByElement.h"

namespace Zorv::Formulas {

Value toElement(Evaluator& evaluator, Value const& value) {
  Value const operand = evaluator.toOperand(value, Mode::Single);
  return operand.isArray() ? operand.asArray().at(0, 0) : operand;
}

}  // namespace Zorv::Formulas
