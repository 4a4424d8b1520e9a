#pragma once

#include <cstdint>

#include "Formulas/Evaluation/Evaluator.h"

namespace Zorv::Formulas {

/// Evaluates a call of a function: the arguments as its signature says, then the function, or the
/// function for each element where an array stands for a single value.
[[nodiscard]] Value callFunction(Evaluator& evaluator, Frame const& frame, std::uint32_t node,
                                 Mode mode);

}  // namespace Zorv::Formulas
