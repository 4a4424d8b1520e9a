#pragma once

#include <cstdint>

#include "Formulas/Evaluation/Evaluator.h"

namespace Zorv::Formulas {

/// Evaluates a call of a function: first the arguments, as its signature says, then the function.
/// Where an argument for a single value is an array, calls the function for each element.
[[nodiscard]] Value callFunction(Evaluator& evaluator, Frame const& frame, std::uint32_t node,
                                 Mode mode);

}  // namespace Zorv::Formulas
