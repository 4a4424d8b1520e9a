#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Utils/CaseFolding.h"

namespace Zorv::Formulas {

/// The names that the LET and LAMBDA functions around a place of a formula give, innermost last.
/// Letter case does not matter, nor the prefix `_xlpm.` that files put before such names; but a
/// name that would be a cell without its prefix keeps it.
class LocalNames {
public:
  /// A name without its prefix, if that is a name.
  [[nodiscard]] static std::string toPlainName(std::string_view name);

  void add(std::string_view name, std::uint32_t slot) {
    _names.emplace_back(toAsciiUpper(toPlainName(name)), slot);
  }

  /// The slot of the innermost name, or nothing.
  [[nodiscard]] std::optional<std::uint32_t> find(std::string_view name) const;

  [[nodiscard]] std::size_t size() const noexcept { return _names.size(); }
  /// Forgets the names after the first `size`.
  void shrinkTo(std::size_t size) { _names.resize(size); }

private:
  std::vector<std::pair<std::string, std::uint32_t>> _names;
};

}  // namespace Zorv::Formulas
