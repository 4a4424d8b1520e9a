#pragma once

#include <cstdint>

#include "Formulas/Values/FunctionTable.h"

namespace Zorv::Formulas {

/// The functions of the engine, at the indices of builtinFunctions(), and behind them one of one
/// argument, which no text can call: it gives the argument's value as it is, references unread, and
/// shows it to the observer of the evaluation. Threads: immutable.
[[nodiscard]] FunctionTable const& observingFunctions();

/// The index of that function.
[[nodiscard]] std::uint16_t getObservingFunction();

}  // namespace Zorv::Formulas
