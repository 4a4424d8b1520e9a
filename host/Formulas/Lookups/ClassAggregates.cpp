#include "Formulas/Lookups/ClassAggregates.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "Formulas/Values/Cells.h"

namespace Zorv::Formulas {

namespace {

/// A walk over the cells of so few members costs no more than finding their aggregate.
constexpr std::size_t fewCells = 8;

}  // namespace

ClassAggregates::ClassAggregates(ClassesOfArea const& area, std::uint32_t width, Area const& values)
    : _area(area), _width(width), _values(values) {
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
      if (std::size_t const place = placeOf(classes.classOf(cell)); place < _classes.size()) {
        _aggregates[place].update(value);
      }
    }
    return cell < area.endCell;
  });
}

Aggregate const* ClassAggregates::find(std::uint32_t classIndex) const noexcept {
  std::size_t const place = placeOf(classIndex);
  return place == _classes.size() ? nullptr : &_aggregates[place];
}

std::unique_ptr<ClassAggregates const> ClassAggregates::renew(
    std::span<TableRange const> areas) const {
  auto const places = findPlaces(areas);
  if (!places) {
    return nullptr;
  }
  auto renewed = std::make_unique<ClassAggregates>(*this);
  for (std::size_t const place : *places) {
    renewed->_aggregates[place] = aggregate(_classes[place]);
  }
  return renewed;
}

std::size_t ClassAggregates::placeOf(std::uint32_t classIndex) const noexcept {
  auto const at = std::ranges::lower_bound(_classes, classIndex);
  return at != _classes.end() && *at == classIndex ? static_cast<std::size_t>(at - _classes.begin())
                                                   : _classes.size();
}

std::optional<std::vector<std::size_t>> ClassAggregates::findPlaces(
    std::span<TableRange const> areas) const {
  constexpr std::uint64_t mostPositions = 4096;
  std::vector<std::size_t> places;
  std::uint64_t positions = 0;
  for (TableRange const& area : areas) {
    TableRange const common = intersect(_values.toTableRange(), area);
    if (!common.isEmpty()) {
      positions +=
          std::uint64_t{common.endRow - common.firstRow} * (common.endColumn - common.firstColumn);
      if (positions > mostPositions) {
        return std::nullopt;
      }
      addPlaces(common, places);
    }
  }
  std::ranges::sort(places);
  places.erase(std::unique(places.begin(), places.end()), places.end());
  std::size_t const cells = std::accumulate(
      places.begin(), places.end(), std::size_t{0},
      [this](auto sum, auto place) { return sum + _area.countOf(_classes[place]); });
  return 2 * cells <= _area.endCell - _area.firstCell ? std::optional(std::move(places))
                                                      : std::nullopt;
}

void ClassAggregates::addPlaces(TableRange const& cells, std::vector<std::size_t>& places) const {
  for (unsigned long row = cells.firstRow; row < cells.endRow; ++row) {
    for (unsigned long column = cells.firstColumn; column < cells.endColumn; ++column) {
      std::uint64_t const position =
          std::uint64_t{row - _values.firstRow} * _width + (column - _values.firstColumn);
      std::uint32_t const cell = _area.classes->firstCellAt(_area.firstPosition + position);
      if (cell < _area.endCell && _area.positionOf(cell) == position) {
        std::size_t const place = placeOf(_area.classes->classOf(cell));
        if (place < _classes.size()) {
          places.push_back(place);
        }
      }
    }
  }
}

Aggregate ClassAggregates::aggregate(std::uint32_t classIndex) const {
  Aggregate result;
  for (std::uint32_t const member : _area.membersOf(classIndex)) {
    std::uint32_t const row = _values.firstRow + _area.positionOf(member) / _width;
    std::uint32_t const column = _values.firstColumn + _area.positionOf(member) % _width;
    DOM::Cell const* const cell = row < _values.endRow && column < _values.endColumn
                                      ? _values.table->findCell(row, column)
                                      : nullptr;
    if (cell != nullptr) {
      result.update(fromFormulaValue(cell->value));
    }
  }
  return result;
}

}  // namespace Zorv::Formulas
