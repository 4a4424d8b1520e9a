#pragma once

#include <cstddef>

#include "Formulas/TraceExpr.h"
#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// A value summed up, with so many values of a range or an array at most.
[[nodiscard]] TracedValue summariseValue(Value const& value, std::size_t mostValues);

}  // namespace Zorv::Formulas
