// Random numbers.

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"

namespace Zorv::Formulas {

namespace {

/// A number from 0 to below 1. Each thread has a generator of its own.
double draw() {
  thread_local std::mt19937_64 generator{std::random_device{}()};
  // The upper bits, as many as a double has: the library's distribution may round up to 1.
  constexpr unsigned unusedBits = 11;
  return static_cast<double>(generator() >> unusedBits) * 0x1p-53;
}

Value random(Call& /*call*/) { return Value::number(draw()); }

/// RANDBETWEEN(least, most): a whole number.
Value randomBetween(Call& call) {
  double const least = std::ceil(call.number(0));
  double const most = std::floor(call.number(1));
  if (most < least) {
    return Value::error(FormulaErrorCode::Number);
  }
  return Value::number(std::min(least + std::floor(draw() * (most - least + 1.0)), most));
}

}  // namespace

std::span<FunctionEntry const> randomFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"RAND", "", random, "Random number from 0 to below 1.", {.isVolatile = true}},
      FunctionEntry{"RANDBETWEEN",
                    "lowest:n, highest:n",
                    randomBetween,
                    "Random whole number within two limits.",
                    {.isVolatile = true}},
  };
  return entries;
}

}  // namespace Zorv::Formulas
