#include "visuals/DataBar.h"

#include <array>
#include <cstddef>

namespace Zorv::Visuals {

std::string_view toText(BarAxis axis) noexcept {
  static constexpr std::array<std::string_view, 3> names{"none", "automatic", "middle"};
  return names.at(static_cast<std::size_t>(axis));
}

std::string_view toText(BarDirection direction) noexcept {
  static constexpr std::array<std::string_view, 3> names{"context", "leftToRight", "rightToLeft"};
  return names.at(static_cast<std::size_t>(direction));
}

}  // namespace Zorv::Visuals
