#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Formulas/Functions/FunctionEntry.h"

namespace Zorv::Formulas {

/// All functions that formulas may call, by name.
///
/// To add a function, write it in the file of its family under Functions/ and give it one row
/// there:
///
///     // MOD(number, divisor): the remainder, with the divisor's sign.
///     Value mod(Call& call) {
///       double const divisor = call.number(1);
///       if (divisor == 0.0) {
///         return Value::error(FormulaErrorCode::DivisionByZero);
///       }
///       return Value::number(call.number(0) - divisor * std::floor(call.number(0) / divisor));
///     }
///
///     constexpr std::array entries = {
///         FunctionEntry{"MOD", "nn", mod},
///         FunctionEntry{"NOW", "", now, {.isVolatile = true}},
///     };
///
/// The signature says how arguments are taken, how many may be given, and which conversions and
/// errors the engine deals with before the function is called; see Parameter. To add a family,
/// write a function that returns its rows, declare it in Families.h and add it to the list in
/// FunctionRegistry.cpp. A name may stand in one row only.
///
/// Threads: immutable once made; made at the first use.
class FunctionRegistry {
public:
  [[nodiscard]] static FunctionRegistry const& get();

  /// The number of a function, told by its name in any case of letters, and with the prefixes that
  /// files put before names of later functions (`_xlfn.`, `_xlws.`); nothing for an unknown name.
  [[nodiscard]] std::optional<std::uint16_t> find(std::string_view name) const;
  [[nodiscard]] FunctionEntry const& at(std::uint16_t number) const noexcept {
    return *_entries[number];
  }

private:
  FunctionRegistry();

  std::vector<FunctionEntry const*> _entries;  ///< ordered by name
};

/// A function's name in upper case and without the prefixes that files put before it.
[[nodiscard]] std::string toPlainFunctionName(std::string_view name);

}  // namespace Zorv::Formulas
