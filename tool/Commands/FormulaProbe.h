#pragma once

#include <cstdint>

#include "tool/Commands/Commands.h"

namespace Zorv::Tool {

/// Evaluates the formulas of the selected rules, each at the first cell of its rule alone, and
/// reports those that cannot be evaluated, such as one that needs more memory than a formula may.
///
/// A formula that fails elsewhere only is not found. Once the formulas have taken more than
/// `mostSteps` together, the others are not tried. Throws what the budget throws, and
/// std::bad_alloc.
void probeFormulas(CommandContext const& context, std::uint64_t mostSteps = 500'000'000);

}  // namespace Zorv::Tool
