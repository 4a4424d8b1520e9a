#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

#include "Formulas/Evaluation/Value.h"

namespace Zorv::Formulas {

/// What is gathered from the numbers of cells, in the order in which they are taken.
struct Gathered {
  double total = 0.0;
  double least = std::numeric_limits<double>::infinity();
  double most = -std::numeric_limits<double>::infinity();
  std::uint64_t count = 0;
  std::optional<FormulaErrorCode> error;  ///< the first one; nothing is taken after it

  void take(Value const& value) noexcept {
    if (error) {
      return;
    }
    if (value.isError()) {
      error = value.asError();
    } else if (value.isNumber()) {
      total += value.asNumber();
      least = std::min(least, value.asNumber());
      most = std::max(most, value.asNumber());
      ++count;
    }
  }
};

}  // namespace Zorv::Formulas
