#pragma once

namespace Zorv::ConditionalFormatters {

/// The predicate that is false for all operands: the answer of a condition of an unknown kind.
template <class... Operands>
[[nodiscard]] bool neverHolds(Operands... /*operands*/) noexcept {
  return false;
}

}  // namespace Zorv::ConditionalFormatters
