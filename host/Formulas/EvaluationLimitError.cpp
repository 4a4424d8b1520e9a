#include "Formulas/EvaluationLimitError.h"

namespace Zorv::Formulas {

EvaluationLimitError::EvaluationLimitError(std::string const& message)
    : BaseRuntimeError(message) {}
EvaluationLimitError::~EvaluationLimitError() = default;

}  // namespace Zorv::Formulas
