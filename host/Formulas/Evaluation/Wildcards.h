#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// Patterns in which `*` stands for any characters, `?` for any one character, and `~` takes the
/// meaning of the character after it away. Letter case does not matter. Nothing is allocated.
namespace Zorv::Formulas {

/// Whether a text holds one of the signs that a pattern gives a meaning to.
[[nodiscard]] bool hasWildcards(std::string_view text) noexcept;

/// Whether a whole text has a pattern's form. Linear in the product of both lengths at most.
[[nodiscard]] bool matchesWildcards(std::string_view text, std::string_view pattern) noexcept;

/// Where the first part of a text that has a pattern's form begins, in bytes, or nothing.
[[nodiscard]] std::optional<std::size_t> findWildcards(std::string_view text,
                                                       std::string_view pattern) noexcept;

}  // namespace Zorv::Formulas
