#include "Formulas/Lookups/ClassAggregates.h"

#include <algorithm>

#include "Formulas/Values/Cells.h"

namespace Zorv::Formulas {

namespace {

/// A walk over the cells of so few members costs no more than finding their aggregate.
constexpr std::size_t fewCells = 8;

}  // namespace

ClassAggregates::ClassAggregates(ClassesOfArea const& area, std::uint32_t width,
                                 Area const& values) {
  CellClasses const& classes = *area.classes;
  for (std::uint32_t classIndex = 0; classIndex < classes.classCount(); ++classIndex) {
    if (classes.membersOf(classIndex).size() > fewCells) {
      _classes.push_back(classIndex);
    }
  }
  _aggregates.resize(_classes.size());
  std::uint32_t cell = area.firstCell;
  forEachCell(values, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
    std::uint32_t const position = row * width + column;
    while (cell < area.endCell && area.positionOf(cell) < position) {
      ++cell;
    }
    if (cell < area.endCell && area.positionOf(cell) == position) {
      auto const at = std::ranges::lower_bound(_classes, classes.classOf(cell));
      if (at != _classes.end() && *at == classes.classOf(cell)) {
        _aggregates[static_cast<std::size_t>(at - _classes.begin())].update(value);
      }
    }
    return cell < area.endCell;
  });
}

Aggregate const* ClassAggregates::find(std::uint32_t classIndex) const noexcept {
  auto const at = std::ranges::lower_bound(_classes, classIndex);
  return at == _classes.end() || *at != classIndex
             ? nullptr
             : &_aggregates[static_cast<std::size_t>(at - _classes.begin())];
}

}  // namespace Zorv::Formulas
