#pragma once

#include <cstddef>
#include <cstdint>

#include "DOM/Styles.h"

namespace Zorv::Analysis {

/// Effect of a rule on a cell for which it holds, as far as it decides whether two rules may change
/// places.
struct Effect {
  /// One bit for each property, or group of properties that programs may take as one: all of a
  /// fill, and bold with italic.
  std::uint64_t properties = 0;
  /// Equal for rules that set the same properties to the same values.
  std::size_t look = 0;
  bool stops = false;
  /// Not known: the rule changes places with none.
  bool isUnknown = false;
};

// What rules of the visual kinds do. A colour scale is a fill.
inline constexpr std::uint64_t fillProperty = 1U << 0U;
inline constexpr std::uint64_t barProperty = 1U << 1U;
inline constexpr std::uint64_t iconProperty = 1U << 2U;

/// The properties that a style sets.
[[nodiscard]] std::uint64_t findProperties(DOM::NamedTableStyle const& style);

/// True if two rules may change places in the order of priority: on every cell, whichever of them
/// hold, all rules together do the same in both orders.
[[nodiscard]] bool canChangePlaces(Effect const& a, Effect const& b) noexcept;

}  // namespace Zorv::Analysis
