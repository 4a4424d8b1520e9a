#pragma once

#include <cstddef>

#include "DOM/ConditionalFormatOperator.h"

namespace Zorv::ConditionalFormatters {

/// Facts that conditions need about the values in their ranges.
struct OperandNeeds {
  bool mean = false;
  /// How many of the largest and of the smallest distinct numbers; see selectBest().
  std::size_t largest = 0;
  std::size_t smallest = 0;
  bool ranking = false;      ///< all distinct numbers in their order
  bool occurrences = false;  ///< which cells repeat a value

  /// Adds what others need.
  OperandNeeds& operator|=(OperandNeeds const& other) noexcept;

  /// True if something of them is taken from the numbers among the values.
  [[nodiscard]] bool includeNumbers() const noexcept {
    return mean || largest > 0 || smallest > 0 || ranking;
  }

  [[nodiscard]] bool isEmpty() const noexcept { return *this == OperandNeeds(); }

  friend bool operator==(OperandNeeds const&, OperandNeeds const&) noexcept = default;
};

/// The needs of a format's condition: none if it does not depend on other cells by itself.
[[nodiscard]] OperandNeeds findOperandNeeds(DOM::ConditionalFormatOperator const& record);

}  // namespace Zorv::ConditionalFormatters
