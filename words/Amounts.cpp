#include "words/Amounts.h"

#include <array>
#include <charconv>
#include <limits>
#include <utility>

#include <fmt/format.h>

namespace Zorv::Words {

namespace {

using std::chrono::milliseconds;

/// A whole number greater than 0, and the text behind it.
struct NumberAndUnit {
  std::uint64_t number;
  std::string_view unit;
};

std::optional<NumberAndUnit> splitUnit(std::string_view text) noexcept {
  std::uint64_t number = 0;
  auto const* const end = text.data() + text.size();
  auto const [rest, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || number == 0) {
    return std::nullopt;
  }
  return NumberAndUnit{.number = number,
                       .unit = text.substr(static_cast<std::size_t>(rest - text.data()))};
}

struct TimeUnit {
  std::string_view symbol;
  std::string_view word;
  milliseconds length;
};

constexpr std::array<TimeUnit, 4> timeUnits = {{{"h", "hour", std::chrono::hours(1)},
                                                {"m", "minute", std::chrono::minutes(1)},
                                                {"s", "second", std::chrono::seconds(1)},
                                                {"ms", "millisecond", milliseconds(1)}}};

}  // namespace

std::optional<std::uint64_t> parseSize(std::string_view text) noexcept {
  constexpr std::string_view units = "kKmMgGtT";
  constexpr unsigned bitsOfUnit = 10;
  auto const parsed = splitUnit(text);
  if (!parsed || parsed->unit.size() > 1) {
    return std::nullopt;
  }
  auto const unit = parsed->unit.empty() ? units.size() : units.find(parsed->unit.front());
  if (unit == std::string_view::npos) {
    return std::nullopt;
  }
  auto const shift = parsed->unit.empty() ? 0U : bitsOfUnit * (static_cast<unsigned>(unit) / 2 + 1);
  if (parsed->number > (std::numeric_limits<std::uint64_t>::max() >> 1U) >> shift) {
    return std::nullopt;
  }
  return parsed->number << shift;
}

std::optional<milliseconds> parseDuration(std::string_view text) noexcept {
  auto const parsed = splitUnit(text);
  if (!parsed) {
    return std::nullopt;
  }
  auto const symbol = parsed->unit.empty() ? std::string_view("s") : parsed->unit;
  for (auto const& unit : timeUnits) {
    constexpr milliseconds longest = std::chrono::days(366);
    if (unit.symbol == symbol &&
        parsed->number <= static_cast<std::uint64_t>(longest / unit.length)) {
      return unit.length * static_cast<milliseconds::rep>(parsed->number);
    }
  }
  return std::nullopt;
}

std::string describeSize(std::uint64_t bytes) {
  static constexpr std::array<std::string_view, 5> units = {"bytes", "KiB", "MiB", "GiB", "TiB"};
  constexpr std::uint64_t step = 1024;
  std::size_t unit = 0;
  while (bytes % step == 0 && bytes > 0 && unit + 1 < units.size()) {
    bytes /= step;
    ++unit;
  }
  return fmt::format("{} {}", bytes, units[unit]);
}

std::string describeDuration(milliseconds duration) {
  for (auto const& unit : timeUnits) {
    if (duration % unit.length == milliseconds(0)) {
      return countOf(static_cast<std::uint64_t>(duration / unit.length), unit.word);
    }
  }
  return {};
}

std::string countOf(std::uint64_t count, std::string_view what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

std::string listNumbers(std::span<std::size_t const> numbers) {
  constexpr std::size_t mostParts = 12;
  std::string text;
  std::size_t parts = 0;
  for (std::size_t first = 0; first < numbers.size();) {
    std::size_t last = first;
    while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) {
      ++last;
    }
    if (++parts > mostParts) {
      return text + fmt::format(" and {} more", numbers.size() - first);
    }
    text += text.empty() ? "" : ", ";
    text += last > first ? fmt::format("{} to {}", numbers[first], numbers[last])
                         : std::to_string(numbers[first]);
    first = last + 1;
  }
  return text;
}

}  // namespace Zorv::Words
