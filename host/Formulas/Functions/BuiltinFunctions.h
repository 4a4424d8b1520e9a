#pragma once

#include <span>

#include "Formulas/Values/FunctionTable.h"

namespace Zorv::Formulas {

/// The table of all functions of the engine. Made at the first use; threads may share it.
///
/// To add a function, write it in the file of its family in this folder and give it one entry:
///
///     Value mod(Call& call) {
///       double const divisor = call.number(1);
///       if (divisor == 0.0) {
///         return Value::error(FormulaErrorCode::DivisionByZero);
///       }
///       return Value::number(call.number(0) - divisor * std::floor(call.number(0) / divisor));
///     }
///
///     constexpr std::array entries = {
///         FunctionEntry{"MOD", "number:n, divisor:n", mod,
///                       "Remainder of a division, with the divisor's sign."},
///         FunctionEntry{"NOW", "", now, "Current date and time.", {.isVolatile = true}},
///     };
///
/// The signature names the arguments and says how they are taken, how many there may be, and which
/// conversions and errors the engine deals with before it calls the function; see Parameter. To add
/// a family, write a function that returns its entries, declare it in Families.h and add it to the
/// list in BuiltinFunctions.cpp. Then run `make docs`, which writes docs/functions.md.
[[nodiscard]] FunctionTable const& builtinFunctions();

/// The families of that table.
[[nodiscard]] std::span<FunctionTable::Family const> builtinFamilies() noexcept;

}  // namespace Zorv::Formulas
