#include "Formulas/Lookups/EqualValues.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "Formulas/Evaluation/Cells.h"
#include "Formulas/Evaluation/ValueText.h"

namespace Zorv::Formulas {

namespace {

constexpr std::size_t cellsAtOnce = 256;

/// So many cells later a class is asked for that is fetched now.
constexpr std::uint32_t cellsAhead = 4;

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
  std::uint64_t const tableSize = area.table->getTable().getCellCount();
  reserve(std::min(area.size(), tableSize));
  bool const isForCriteria = kind == LookupKind::CriterionClasses;
  std::vector<Value> values;
  std::vector<std::uint32_t> positions;
  forEachCell(area, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
    if (!value.isEmpty()) {
      values.push_back(isForCriteria ? asCriteriaSee(value, locale) : value);
      positions.push_back(row * area.width() + column);
      if (values.size() == cellsAtOnce) {
        addCells(values, positions);
      }
    }
    return true;
  });
  addCells(values, positions);
  finish(_values.size());
}

void EqualValues::addCells(std::vector<Value>& values, std::vector<std::uint32_t>& positions) {
  std::array<std::uint32_t, cellsAtOnce> numbers{};
  _values.obtain(values, numbers);
  for (std::size_t i = 0; i < values.size(); ++i) {
    add(positions[i], numbers[i]);
  }
  values.clear();
  positions.clear();
}

std::optional<std::uint32_t> EqualValues::find(Value const& value,
                                               std::uint32_t& lastCell) const noexcept {
  std::uint32_t const next = lastCell + 1;
  if (next < size() && _values.isNumberOf(classOf(next), value)) {
    lastCell = next;
    std::uint32_t const later = classOf(std::min(next + cellsAhead, size() - 1));
    _values.prepare(later);
    prepare(later);
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
