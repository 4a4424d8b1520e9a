#pragma once

#include <cstddef>
#include <cstdint>

#include "Formulas/Evaluation/Area.h"

namespace Zorv::Formulas {

/// How many cells of an area exist at most.
[[nodiscard]] std::uint64_t mostCellsIn(Area const& area);

/// The rows of an area that may hold cells, cut into bands of some thousand cells each, from the
/// top: what several threads share out among themselves.
class AreaBands {
public:
  /// How many cells a band has on average: enough work to outweigh handing it over, and little
  /// enough to share out evenly.
  static constexpr std::uint64_t cellsInBand = 4096;

  explicit AreaBands(Area const& area);

  [[nodiscard]] std::size_t count() const noexcept;
  [[nodiscard]] Area at(std::size_t band) const noexcept;

private:
  Area _used;                 ///< has no rows where there are no cells
  std::uint32_t _height = 1;  ///< of a band
};

}  // namespace Zorv::Formulas
