#pragma once

namespace Zorv::ConditionalFormatters {

/// The comparison of a condition that holds for no cell, such as one of an unknown kind.
template <class... Args>
[[nodiscard]] bool neverHolds(Args... /*operands*/) noexcept {
  return false;
}

}  // namespace Zorv::ConditionalFormatters
