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

/// Where the first value equal to a key stands, or the last one. An empty key is equal to positions
/// without a value. What the evaluator remembers of the line spares the walk over it.
[[nodiscard]] std::optional<std::uint32_t> findEqual(Evaluator& evaluator, Line const& line,
                                                     Value const& key, TextMatch textMatch,
                                                     Direction direction);

/// In a line of ascending order, where the last value stands that is not above a key. By bisection,
/// which steps over values of other kinds.
[[nodiscard]] std::optional<std::uint32_t> findLastNotAbove(Line const& line, Value const& key);

/// In a line of descending order, where the last value stands that is not below a key, or the first
/// one equal to it.
[[nodiscard]] std::optional<std::uint32_t> findLastNotBelow(Line const& line, Value const& key);

enum class Side : std::uint8_t { Below, Above };

/// In a line of any order, where the value equal to a key stands, otherwise the nearest on a side.
[[nodiscard]] std::optional<std::uint32_t> findNearest(Line const& line, Value const& key,
                                                       Side side, Direction direction);

}  // namespace Zorv::Formulas
