#pragma once

#include <string>

#include "Utils/Exceptions.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// Thrown when one evaluation meets a limit of the engine: its memory, its steps, the size of an
/// array, or how deeply formulas nest.
///
/// The formula has a value, but this engine does not calculate it. So it is neither a spreadsheet
/// error, which formulas can see, nor a FormulaException. what() names the limit.
class ZORV_HOST_EXPORT EvaluationLimitError : public BaseRuntimeError {
public:
  explicit EvaluationLimitError(std::string const& message);
  EvaluationLimitError(EvaluationLimitError const&) = default;
  EvaluationLimitError& operator=(EvaluationLimitError const&) = default;
  ~EvaluationLimitError() override;
};

}  // namespace Zorv::Formulas
