#pragma once

#include <cstdint>
#include <limits>

namespace Zorv::Formulas {

/// The class of a position that has no cell.
inline constexpr std::uint32_t noClass = std::numeric_limits<std::uint32_t>::max();

/// A cell that comes from one class to another one, appears or disappears; see CellClasses.
struct ClassEdit {
  std::uint32_t position = 0;
  /// The cell's index before all edits; of a cell that appears that of the next one.
  std::uint32_t cell = 0;
  std::uint32_t before = noClass;  ///< the class; not that after the edit
  std::uint32_t after = noClass;

  /// How much the next cells move behind, modulo 2^32.
  [[nodiscard]] constexpr std::uint32_t shiftOfNext() const noexcept {
    return (before == noClass ? 1U : 0U) - (after == noClass ? 1U : 0U);
  }
};

}  // namespace Zorv::Formulas
