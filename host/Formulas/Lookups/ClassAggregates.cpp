#include "Formulas/Lookups/ClassAggregates.h"

#include <algorithm>

#include "Formulas/Lookups/ListEdits.h"
#include "Formulas/Values/Cells.h"

namespace Zorv::Formulas {

namespace {

/// A walk over the cells of so few members costs no more than finding their aggregate.
constexpr std::size_t fewCells = 8;

}  // namespace

ClassAggregates::ClassAggregates(ClassesOfArea const& area, std::uint32_t width, Area const& values)
    : _area(area), _width(width), _values(values), _valueOfCell(cellCount()) {
  readValues(_values.toTableRange());
  CellClasses const& classes = *area.classes;
  for (std::uint32_t classIndex = 0; classIndex < classes.classCount(); ++classIndex) {
    if (classes.countOf(classIndex) > fewCells) {
      _classes.push_back(classIndex);
      _aggregates.push_back(aggregate(classIndex));
    }
  }
}

Aggregate const* ClassAggregates::find(std::uint32_t classIndex) const noexcept {
  auto const at = std::ranges::lower_bound(_classes, classIndex);
  bool const isThere = at != _classes.end() && *at == classIndex;
  return isThere ? &_aggregates[static_cast<std::size_t>(at - _classes.begin())] : nullptr;
}

bool ClassAggregates::follow(std::span<ClassEdit const> edits,
                             std::span<TableRange const> areasOfValues) {
  ClassIndexes touched;
  followClasses(edits, touched);
  if (!followValues(areasOfValues, touched)) {
    return false;
  }
  aggregateAgain(touched);
  return true;
}

void ClassAggregates::readValues(TableRange const& range) {
  std::uint32_t cell = firstCellAt(range.firstRow, range.firstColumn);
  auto [valueCell, end] = _values.table->getRangeIterators(range);
  for (; valueCell != end; ++valueCell) {
    DOM::CellInfo const info = valueCell.getCellInfo();
    std::uint64_t const position = positionOf(info.getRowIndex(), info.getColIndex());
    while (cell < _area.endCell && _area.positionOf(cell) < position) {
      ++cell;
    }
    if (cell == _area.endCell) {
      return;
    }
    if (_area.positionOf(cell) == position) {
      _valueOfCell[cell - _area.firstCell] = SummedValue(fromFormulaValue(info.getCell()->value));
    }
  }
}

SummedValue ClassAggregates::readValue(std::uint32_t position) const noexcept {
  std::uint32_t const row = _values.firstRow + position / _width;
  std::uint32_t const column = _values.firstColumn + position % _width;
  DOM::Cell const* const cell = row < _values.endRow && column < _values.endColumn
                                    ? _values.table->findCell(row, column)
                                    : nullptr;
  return cell == nullptr ? SummedValue() : SummedValue(fromFormulaValue(cell->value));
}

Aggregate ClassAggregates::aggregate(std::uint32_t classIndex) const noexcept {
  Aggregate result;
  for (std::uint32_t const member : _area.membersOf(classIndex)) {
    result.update(_valueOfCell[member - _area.firstCell].toValue());
  }
  return result;
}

void ClassAggregates::followClasses(std::span<ClassEdit const> edits, ClassIndexes& touched) {
  std::vector<ListEdit<SummedValue>> ofValues;
  for (ClassEdit const& edit : edits) {
    bool const appears = edit.before == noClass;
    bool const disappears = edit.after == noClass;
    if (!appears) {
      touched.push_back(edit.before);
    }
    if (!disappears) {
      touched.push_back(edit.after);
    }
    if ((appears || disappears) && _area.contains(edit.position)) {
      ofValues.push_back(
          {edit.cell - _area.firstCell, appears,
           appears ? readValue(edit.position - _area.firstPosition) : SummedValue()});
    }
  }
  applyEdits<std::vector<SummedValue>>(_valueOfCell, ofValues);
  _area.findCells();
}

bool ClassAggregates::followValues(std::span<TableRange const> areas, ClassIndexes& touched) {
  std::size_t const mostCells = cellCount() / 16 + 64;
  std::size_t count = 0;
  for (TableRange const& area : areas) {
    TableRange const common = intersect(_values.toTableRange(), area);
    if (common.isEmpty()) {
      continue;
    }
    std::uint32_t const first = firstCellAt(common.firstRow, common.firstColumn);
    std::uint32_t const end = firstCellAt(common.endRow - 1, common.endColumn);
    count += end - first;
    if (count > mostCells) {
      return false;
    }
    for (std::uint32_t cell = first; cell < end; ++cell) {
      std::uint32_t const column = _values.firstColumn + _area.positionOf(cell) % _width;
      if (common.firstColumn <= column && column < common.endColumn) {
        _valueOfCell[cell - _area.firstCell] = SummedValue();
        touched.push_back(_area.classes->classOf(cell));
      }
    }
    readValues(common);
  }
  return true;
}

void ClassAggregates::aggregateAgain(ClassIndexes& touched) {
  std::ranges::sort(touched);
  touched.erase(std::unique(touched.begin(), touched.end()), touched.end());
  std::vector<ListEdit<std::uint32_t>> ofClasses;
  std::vector<ListEdit<Aggregate>> ofAggregates;
  for (std::uint32_t const classIndex : touched) {
    auto const found = std::ranges::lower_bound(_classes, classIndex);
    auto const at = static_cast<std::uint32_t>(found - _classes.begin());
    bool const isThere = found != _classes.end() && *found == classIndex;
    bool const isToBe = _area.classes->countOf(classIndex) > fewCells;
    if (isThere && isToBe) {
      _aggregates[at] = aggregate(classIndex);
    } else if (isThere || isToBe) {
      ofClasses.push_back({at, isToBe, classIndex});
      ofAggregates.push_back({at, isToBe, isToBe ? aggregate(classIndex) : Aggregate()});
    }
  }
  applyEdits<ClassIndexes>(_classes, ofClasses);
  applyEdits<std::vector<Aggregate>>(_aggregates, ofAggregates);
}

std::uint32_t ClassAggregates::firstCellAt(unsigned long row, unsigned long column) const noexcept {
  std::uint32_t const cell =
      _area.classes->firstCellAt(_area.firstPosition + positionOf(row, column));
  return std::clamp(cell, _area.firstCell, _area.endCell);
}

}  // namespace Zorv::Formulas
