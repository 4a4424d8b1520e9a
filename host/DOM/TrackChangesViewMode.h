#pragma once

#include <cstdint>

namespace Zorv::DOM {

/// View mode of tracked changes.
enum class TrackChangesViewMode : std::uint8_t {
  Original = 0,
  OriginalWithMarkup = 1,
  FinalWithMarkup = 2,
  Balloons = 3,
  Final = 4,  ///< as if every change had been accepted
};

}  // namespace Zorv::DOM
