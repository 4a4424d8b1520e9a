#pragma once

#include <cstdint>
#include <random>

namespace Zorv::ConditionalFormatters {

/// A random part of a hash, so that no document can choose values that crowd in a hash table.
[[nodiscard]] inline std::uint64_t drawSalt() {
  std::random_device device;
  return std::uint64_t{device()} << 32U | device();
}

}  // namespace Zorv::ConditionalFormatters
