#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "Formulas/Limits/StepMeter.h"

/// Patterns: `*` matches any characters, `?` any one character, and `~` escapes the character after
/// it. Letter case does not matter. Nothing is allocated. The compared characters are counted by
/// the meter.
namespace Zorv::Formulas {

/// True for a text with one of these signs.
[[nodiscard]] bool hasWildcards(std::string_view text) noexcept;

/// Matches a whole text with a pattern. Linear in the product of both lengths at most.
[[nodiscard]] bool matchesWildcards(std::string_view text, std::string_view pattern,
                                    StepMeter& steps);

/// The byte index of the first part of a text that matches a pattern, or nothing.
[[nodiscard]] std::optional<std::size_t> findWildcards(std::string_view text,
                                                       std::string_view pattern, StepMeter& steps);

}  // namespace Zorv::Formulas
