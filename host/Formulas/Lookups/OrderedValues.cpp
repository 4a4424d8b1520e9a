#include "Formulas/Lookups/OrderedValues.h"

#include <algorithm>

#include "Formulas/Text/Texts.h"
#include "Formulas/Values/Cells.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Operator;

bool isTextBefore(std::string_view a, std::string_view b) noexcept {
  return compareTexts(a, b) < 0;
}

template <class T, class Before = std::ranges::less>
std::uint64_t countIn(std::vector<T> const& values, Operator op, T const& operand,
                      Before const& before = {}) noexcept {
  bool const withEqual = op == Operator::LessOrEqual || op == Operator::Greater;
  auto const bound = withEqual ? std::ranges::upper_bound(values, operand, before)
                               : std::ranges::lower_bound(values, operand, before);
  auto const below = static_cast<std::uint64_t>(bound - values.begin());
  bool const isBelow = op == Operator::Less || op == Operator::LessOrEqual;
  return isBelow ? below : values.size() - below;
}

}  // namespace

OrderedValues::OrderedValues(Area const& area) {
  forEachCell(area, [this](std::uint32_t /*row*/, std::uint32_t /*column*/, Value const& value) {
    if (value.isNumber()) {
      _numbers.push_back(value.asNumber());
    } else if (value.isText()) {
      _texts.push_back(value.asText());
    } else if (value.isBoolean()) {
      _truths.push_back(value.asBoolean() ? 1 : 0);
    } else if (value.isError()) {
      _hasErrors = true;
    }
    return true;
  });
  std::ranges::sort(_numbers);
  std::ranges::sort(_texts, isTextBefore);
  std::ranges::sort(_truths);
}

std::uint64_t OrderedValues::count(Operator op, Value const& operand) const noexcept {
  switch (operand.kind()) {
    case Value::Kind::Number:
      return countIn(_numbers, op, operand.asNumber());
    case Value::Kind::Text:
      return countIn(_texts, op, operand.asText(), isTextBefore);
    case Value::Kind::Boolean:
      return countIn(_truths, op,
                     std::uint8_t{operand.asBoolean() ? std::uint8_t{1} : std::uint8_t{0}});
    default:
      return 0;
  }
}

std::optional<RankCounts> OrderedValues::countAround(double number) const noexcept {
  if (_hasErrors) {
    return std::nullopt;
  }
  auto const first = std::ranges::lower_bound(_numbers, number);
  auto const end = std::ranges::upper_bound(_numbers, number);
  return RankCounts{.below = static_cast<std::uint64_t>(first - _numbers.begin()),
                    .equal = static_cast<std::uint64_t>(end - first),
                    .above = static_cast<std::uint64_t>(_numbers.end() - end)};
}

}  // namespace Zorv::Formulas
