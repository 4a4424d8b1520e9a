#pragma once

#include <cstdint>
#include <span>

#include "Formulas/Evaluation/Evaluator.h"

/// Functions that formulas make with LAMBDA, and calls of them.
namespace Zorv::Formulas {

/// A function that LAMBDA made: its call in a formula under evaluation, whose last argument is the
/// body and whose others are the parameters.
struct Lambda {
  Frame frame;  ///< with the names' values of the time when it was made
  std::uint32_t node = 0;

  [[nodiscard]] std::uint32_t parameterCount() const noexcept {
    return frame.nodeAt(node).argumentCount - 1;
  }
};

/// The function that a call of LAMBDA makes; `#NAME?` where a parameter is no name.
[[nodiscard]] Value makeLambda(Evaluator& evaluator, Frame const& frame, std::uint32_t node);

/// The body's value for some arguments; `#VALUE!` where there are more or fewer than parameters.
[[nodiscard]] Value callLambda(Evaluator& evaluator, Lambda const& lambda,
                               std::span<Value const> arguments, Mode mode);

/// Evaluates a node of the kind Call. What is called must be a function: otherwise `#VALUE!`. Kept
/// out of the evaluation of ordinary nodes, as the next one, since calls are rare.
[[nodiscard]] [[gnu::noinline]] Value evaluateCall(Evaluator& evaluator, Frame const& frame,
                                                   std::uint32_t node, Mode mode);

/// Evaluates a call of what is no function of the engine: of a defined name that stands for a
/// LAMBDA. `#NAME?` where there is no such name.
[[nodiscard]] [[gnu::noinline]] Value evaluateCallOfName(Evaluator& evaluator, Frame const& frame,
                                                         DOM::FormulaSyntaxTree::Node const& node,
                                                         Mode mode);

}  // namespace Zorv::Formulas
