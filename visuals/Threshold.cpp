#include "visuals/Threshold.h"

#include <array>
#include <cstddef>

namespace Zorv::Visuals {

std::string_view toText(ThresholdKind kind) noexcept {
  static constexpr std::array<std::string_view, 8> names{
      "min", "max", "num", "percent", "percentile", "formula", "autoMin", "autoMax"};
  return names.at(static_cast<std::size_t>(kind));
}

}  // namespace Zorv::Visuals
