#pragma once

#include <bit>
#include <cstdint>

namespace Zorv::ConditionalFormatters {

/// A number as an integer: equal numbers have equal keys, and keys ascend with the numbers.
using OrderedKey = std::uint64_t;

/// Requires a number that is not NaN. Both zeros have one key.
[[nodiscard]] inline OrderedKey orderedKeyOf(double number) noexcept {
  constexpr OrderedKey signBit = OrderedKey{1} << 63U;
  // The bits of positive doubles ascend with the value; those of negative ones descend.
  auto const bits = std::bit_cast<OrderedKey>(number == 0.0 ? 0.0 : number);
  return (bits & signBit) != 0 ? ~bits : bits | signBit;
}

/// The number of a key; zero is +0.
[[nodiscard]] inline double numberOfKey(OrderedKey key) noexcept {
  constexpr OrderedKey signBit = OrderedKey{1} << 63U;
  return std::bit_cast<double>((key & signBit) != 0 ? key ^ signBit : ~key);
}

}  // namespace Zorv::ConditionalFormatters
