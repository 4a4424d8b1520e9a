#include "Formulas/Limits/StepMeter.h"

#include <algorithm>

#include <fmt/format.h>

#include "Formulas/EvaluationLimitError.h"
#include "Utils/WorkBudget.h"

namespace Zorv::Formulas {

void StepMeter::draw(std::uint64_t steps) {
  constexpr std::uint64_t lump = 4096;
  std::uint64_t const drawn = std::max(lump, steps - _left);
  if (drawn > mostSteps || _drawn > mostSteps - drawn) {
    throw EvaluationLimitError(fmt::format("the formula takes more than {} steps", mostSteps));
  }
  _drawn += drawn;
  if (_budget != nullptr) {
    _budget->spend(drawn);
  }
  _left += drawn;
}

}  // namespace Zorv::Formulas
