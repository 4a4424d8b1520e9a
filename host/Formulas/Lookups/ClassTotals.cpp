#include "Formulas/Lookups/ClassTotals.h"

#include <algorithm>

#include "Formulas/Evaluation/Cells.h"

namespace Zorv::Formulas {

namespace {

constexpr std::size_t fewCells = 8;

}  // namespace

ClassTotals::ClassTotals(ClassesOfArea const& area, std::uint32_t width, Area const& values) {
  CellClasses const& classes = *area.classes;
  for (std::uint32_t number = 0; number < classes.classCount(); ++number) {
    if (classes.membersOf(number).size() > fewCells) {
      _classes.push_back(number);
    }
  }
  _totals.resize(_classes.size());
  std::uint32_t cell = area.firstCell;
  forEachCell(values, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
    std::uint32_t const position = row * width + column;
    while (cell < area.endCell && area.positionOf(cell) < position) {
      ++cell;
    }
    if (cell < area.endCell && area.positionOf(cell) == position) {
      auto const at = std::ranges::lower_bound(_classes, classes.classOf(cell));
      if (at != _classes.end() && *at == classes.classOf(cell)) {
        _totals[static_cast<std::size_t>(at - _classes.begin())].take(value);
      }
    }
    return cell < area.endCell;
  });
}

Gathered const* ClassTotals::find(std::uint32_t number) const noexcept {
  auto const at = std::ranges::lower_bound(_classes, number);
  return at == _classes.end() || *at != number
             ? nullptr
             : &_totals[static_cast<std::size_t>(at - _classes.begin())];
}

std::size_t ClassTotals::memory() const noexcept { return memoryOf(_classes) + memoryOf(_totals); }

}  // namespace Zorv::Formulas
