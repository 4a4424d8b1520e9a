#pragma once

#include "DOM/ConditionalFormatOperator.h"

namespace Zorv::ConditionalFormatters {

/// True if a value that occurs in the ranges of a format satisfies its kind: more than once for
/// duplicates, once for unique values. A record of another kind is satisfied by none.
[[nodiscard]] constexpr bool satisfiesOccurrence(DOM::UniquenessType type,
                                                 bool occursRepeatedly) noexcept {
  switch (type) {
    case DOM::UniquenessType::Duplicate:
      return occursRepeatedly;
    case DOM::UniquenessType::Unique:
      return !occursRepeatedly;
  }
  return false;
}

}  // namespace Zorv::ConditionalFormatters
