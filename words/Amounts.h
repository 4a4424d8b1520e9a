#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Amounts of memory and time, counts and lists of numbers, as people write them.
namespace Zorv::Words {

/// Bytes of a text such as `512M`, `2G` or `1048576`: a whole number and one of K, M, G, T for
/// powers of 1024, in any letter case. Nothing for any other text, and for 0.
[[nodiscard]] std::optional<std::uint64_t> parseSize(std::string_view text) noexcept;

/// A text such as `30s`, `5m`, `2h` or `500ms`; seconds without a unit. Nothing for any other text,
/// for 0, and for more than a year.
[[nodiscard]] std::optional<std::chrono::milliseconds> parseDuration(
    std::string_view text) noexcept;

/// A number of bytes in the largest unit that gives a whole number: `4 GiB`.
[[nodiscard]] std::string describeSize(std::uint64_t bytes);

/// A duration in the largest unit that gives a whole number: `10 minutes`.
[[nodiscard]] std::string describeDuration(std::chrono::milliseconds duration);

/// `1 data bar`, `2 data bars`.
[[nodiscard]] std::string countOf(std::uint64_t count, std::string_view what);

/// Ascending numbers, with neighbours together: `3 to 8, 12`. After some, the number of the others.
[[nodiscard]] std::string listNumbers(std::span<std::size_t const> numbers);

}  // namespace Zorv::Words
