#include "Formulas/Lookups/EqualValues.h"

#include <algorithm>
#include <cmath>

#include "Formulas/Evaluation/Cells.h"
#include "Formulas/Evaluation/ValueText.h"

namespace Zorv::Formulas {

namespace {

/// What a cell is to a criterion: a text that reads as a number is that number.
Value asCriteriaSee(Value const& value, OfficeUtils::LocaleContext const& locale) {
  if (!value.isText()) {
    return value;
  }
  auto const number = readValue(value.asText(), locale);
  return number && std::isfinite(*number) ? Value::number(*number) : value;
}

}  // namespace

EqualValues::EqualValues(Area const& area, LookupKind kind,
                         OfficeUtils::LocaleContext const& locale) {
  forEachCell(area, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
    if (!value.isEmpty()) {
      bool const isForCriteria = kind == LookupKind::CriterionClasses;
      add(row * area.width() + column,
          _values.obtain(isForCriteria ? asCriteriaSee(value, locale) : value));
    }
    return true;
  });
  finish(_values.size());
}

std::optional<std::uint32_t> EqualValues::find(Value const& value,
                                               std::uint32_t& lastCell) const noexcept {
  std::uint32_t const next = lastCell + 1;
  if (next < size() && _values.isNumberOf(classOf(next), value)) {
    lastCell = next;
    return classOf(next);
  }
  auto const found = _values.find(value);
  if (found) {
    // Whoever walks along the cells has come to the next one of the class.
    auto const members = membersOf(*found);
    auto const ahead = std::ranges::upper_bound(members, lastCell);
    lastCell = ahead == members.end() ? members.front() : *ahead;
  }
  return found;
}

std::size_t EqualValues::memory() const noexcept {
  return CellClasses::memory() + _values.memory();
}

}  // namespace Zorv::Formulas
