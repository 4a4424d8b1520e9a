#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// The aggregate state of SUMIF, AVERAGEIF, MINIFS and MAXIFS.
struct Aggregate {
  double sum = 0.0;
  double min = std::numeric_limits<double>::infinity();
  double max = -std::numeric_limits<double>::infinity();
  std::uint64_t count = 0;
  std::optional<FormulaErrorCode> error;  ///< the first one, which ends the aggregation

  /// Adds a cell's value; those that are neither numbers nor errors do not count. The order of the
  /// values matters to the last bits of the sum.
  void update(Value const& value) noexcept {
    if (error) {
      return;
    }
    if (value.isError()) {
      error = value.asError();
    } else if (value.isNumber()) {
      sum += value.asNumber();
      min = std::min(min, value.asNumber());
      max = std::max(max, value.asNumber());
      ++count;
    }
  }
};

}  // namespace Zorv::Formulas
