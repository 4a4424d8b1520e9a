#pragma once

#include <cstdint>
#include <optional>

#include "Formulas/Evaluation/Evaluator.h"
#include "Formulas/Functions/Grid.h"

/// Searches for a value in a row or a column. A value is only ever found among those of its own
/// kind; texts compare without regard to letter case. The cost is that of the existing cells.
namespace Zorv::Formulas {

enum class TextMatch : std::uint8_t { Plain, Wildcards };

enum class Direction : std::uint8_t { Forwards, Backwards };

/// The position of the first value equal to a key, or of the last one. An empty key is equal to
/// positions without a value. Uses the index of the line where there is one.
[[nodiscard]] std::optional<std::uint32_t> findEqual(Evaluator& evaluator, Line const& line,
                                                     Value const& key, TextMatch textMatch,
                                                     Direction direction);

/// The position of the last value not above a key, in an ascending line. By bisection, which skips
/// values of other kinds.
[[nodiscard]] std::optional<std::uint32_t> findLastNotAbove(StepMeter& steps, Line const& line,
                                                            Value const& key);

/// The position of the last value not below a key, or of the first one equal to it, in a descending
/// line.
[[nodiscard]] std::optional<std::uint32_t> findLastNotBelow(StepMeter& steps, Line const& line,
                                                            Value const& key);

enum class Side : std::uint8_t { Below, Above };

/// The position of a value equal to a key, or else of the nearest on a side, in any line.
[[nodiscard]] std::optional<std::uint32_t> findNearest(StepMeter& steps, Line const& line,
                                                       Value const& key, Side side,
                                                       Direction direction);

}  // namespace Zorv::Formulas
