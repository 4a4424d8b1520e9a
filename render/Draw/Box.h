#pragma once

#include <algorithm>

namespace Zorv::Render::Draw {

/// Rectangle in CSS pixels; y grows downwards.
struct Box {
  double left = 0;
  double top = 0;
  double right = 0;   ///< not less than `left`
  double bottom = 0;  ///< not less than `top`

  [[nodiscard]] double width() const noexcept { return right - left; }
  [[nodiscard]] double height() const noexcept { return bottom - top; }
  [[nodiscard]] bool isEmpty() const noexcept { return right <= left || bottom <= top; }

  friend bool operator==(Box const&, Box const&) = default;
};

/// The box with its edges moved inwards; it shrinks to its middle at most.
[[nodiscard]] inline Box shrink(Box const& box, double across, double down) noexcept {
  double const x = std::min(across, box.width() / 2);
  double const y = std::min(down, box.height() / 2);
  return {box.left + x, box.top + y, box.right - x, box.bottom - y};
}

}  // namespace Zorv::Render::Draw
