#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Formulas/Values/FunctionEntry.h"

namespace Zorv::Formulas {

/// The functions that formulas may call, in alphabetical order.
///
/// An expression names a function by its index here, so it must be evaluated with the table by
/// which it was parsed. Borrows the entries. Threads: immutable.
class FunctionTable {
public:
  /// A family of functions, as one source file has it.
  using Family = std::span<FunctionEntry const> (*)() noexcept;

  /// Requires that no name occurs twice.
  explicit FunctionTable(std::span<Family const> families);

  /// The index of a function by its name, in any case of letters and with the prefixes that files
  /// put before names of later functions (`_xlfn.`, `_xlws.`). Nothing for an unknown name.
  /// Logarithmic.
  [[nodiscard]] std::optional<std::uint16_t> find(std::string_view name) const;
  [[nodiscard]] FunctionEntry const& at(std::uint16_t index) const noexcept {
    return *_entries[index];
  }
  [[nodiscard]] std::span<FunctionEntry const* const> entries() const noexcept { return _entries; }

private:
  std::vector<FunctionEntry const*> _entries;  ///< ordered by name
};

/// A function's name in upper case and without the prefixes that files put before it.
[[nodiscard]] std::string toPlainFunctionName(std::string_view name);

}  // namespace Zorv::Formulas
