#include "Formulas/Functions/LineSearch.h"

#include "Formulas/Text/Wildcards.h"
#include "Formulas/Values/Comparison.h"

namespace Zorv::Formulas {

namespace {

bool isComparable(Value const& value, Value const& key) noexcept {
  return value.kind() == key.kind() && !key.isError();
}

bool isEqual(Value const& value, Value const& key) noexcept {
  return isComparable(value, key) && compareValues(value, key) == 0;
}

/// The first position, or the last one, whose value `isFound`.
template <class IsFound>
std::optional<std::uint32_t> findValue(StepMeter& steps, Line const& line, Direction direction,
                                       IsFound const& isFound) {
  std::optional<std::uint32_t> found;
  line.visit(steps, 0, line.size(), [&](std::uint32_t position, Value const& value) {
    if (isFound(value)) {
      found = position;
    }
    return !found || direction == Direction::Backwards;
  });
  return found;
}

/// The first position without a value, cells that do not exist included.
std::optional<std::uint32_t> findEmpty(StepMeter& steps, Line const& line) {
  std::uint32_t next = 0;
  line.visit(steps, 0, line.size(), [&](std::uint32_t position, Value const& value) {
    bool const isGap = line.isReference() && position != next;
    if (isGap || value.isEmpty()) {
      return false;
    }
    next = position + 1;
    return true;
  });
  return next < line.size() ? std::optional(next) : std::nullopt;
}

struct Found {
  std::uint32_t position;
  Value value;
};

/// The first value from a position on that can be compared with a key.
std::optional<Found> findComparable(StepMeter& steps, Line const& line, std::uint32_t first,
                                    std::uint32_t end, Value const& key) {
  std::optional<Found> found;
  line.visit(steps, first, end, [&](std::uint32_t position, Value const& value) {
    if (isComparable(value, key)) {
      found = Found{position, value};
    }
    return !found;
  });
  return found;
}

}  // namespace

std::optional<std::uint32_t> findEqual(Evaluator& evaluator, Line const& line, Value const& key,
                                       TextMatch textMatch, Direction direction) {
  if (key.isEmpty()) {
    return findEmpty(evaluator.steps(), line);
  }
  bool const hasPattern =
      textMatch == TextMatch::Wildcards && key.isText() && hasWildcards(key.asText());
  bool const mayBeKnown = line.isReference() && !hasPattern && !key.isError();
  if (LookupSession* const lookups = mayBeKnown ? evaluator.lookups() : nullptr) {
    if (auto const found = lookups->findEqual(line.area(), key, direction == Direction::Backwards,
                                              evaluator.locale())) {
      return *found;
    }
  }
  StepMeter& steps = evaluator.steps();
  return findValue(steps, line, direction, [&](Value const& value) {
    return hasPattern ? value.isText() && matchesWildcards(value.asText(), key.asText(), steps)
                      : isEqual(value, key);
  });
}

std::optional<std::uint32_t> findLastNotAbove(StepMeter& steps, Line const& line,
                                              Value const& key) {
  std::optional<std::uint32_t> best;
  std::uint32_t first = 0;
  std::uint32_t end = line.size();
  while (first < end) {
    std::uint32_t const middle = first + (end - first) / 2;
    // What lies between the middle and the value that is found never comes up again.
    auto const found = findComparable(steps, line, middle, end, key);
    if (found && compareValues(found->value, key) <= 0) {
      best = found->position;
      first = found->position + 1;
    } else {
      end = middle;
    }
  }
  return best;
}

std::optional<std::uint32_t> findLastNotBelow(StepMeter& steps, Line const& line,
                                              Value const& key) {
  std::optional<std::uint32_t> best;
  line.visit(steps, 0, line.size(), [&](std::uint32_t position, Value const& value) {
    if (!isComparable(value, key)) {
      return true;
    }
    auto const order = compareValues(value, key);
    if (order >= 0) {
      best = position;
    }
    return order > 0;
  });
  return best;
}

std::optional<std::uint32_t> findNearest(StepMeter& steps, Line const& line, Value const& key,
                                         Side side, Direction direction) {
  std::optional<Found> best;
  line.visit(steps, 0, line.size(), [&](std::uint32_t position, Value const& value) {
    if (!isComparable(value, key)) {
      return true;
    }
    auto const order = compareValues(value, key);
    if (order != 0 && (order < 0) != (side == Side::Below)) {
      return true;
    }
    auto const change = best ? compareValues(value, best->value) : std::strong_ordering::equal;
    bool const isNearer = side == Side::Below ? change > 0 : change < 0;
    if (!best || isNearer || (change == 0 && direction == Direction::Backwards)) {
      best = Found{position, value};
    }
    return order != 0 || direction == Direction::Backwards;
  });
  return best ? std::optional(best->position) : std::nullopt;
}

}  // namespace Zorv::Formulas
