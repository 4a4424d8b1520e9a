#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>

namespace Zorv::Formulas {

/// An argument that counts characters or gives a position among them, already rounded to a whole
/// number; nothing for one below the least. Larger ones than any text has are cut.
constexpr std::optional<std::size_t> toCharacterCount(double whole, double least) noexcept {
  constexpr double moreThanAnyTextHas = 1e9;
  return whole < least
             ? std::nullopt
             : std::optional(static_cast<std::size_t>(std::min(whole, moreThanAnyTextHas)));
}

}  // namespace Zorv::Formulas
