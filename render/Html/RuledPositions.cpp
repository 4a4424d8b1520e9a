#include "render/Html/RuledPositions.h"

#include <algorithm>

namespace Zorv::Render {

namespace {

/// The first of some lines whose index in the table is not below `index`.
std::uint32_t findLine(std::vector<Line> const& lines, unsigned long index) {
  auto const found = std::ranges::lower_bound(lines, index, {}, &Line::index);
  return static_cast<std::uint32_t>(found - lines.begin());
}

}  // namespace

RuledPositions::RuledPositions(SheetPicture const& sheet) : _changes(sheet.columns.size() + 1) {
  for (auto const& rule : sheet.rules) {
    for (auto const& range : rule.areas) {
      Area const area{.rowBegin = findLine(sheet.rows, range.firstRow),
                      .rowEnd = findLine(sheet.rows, range.endRow),
                      .columnBegin = findLine(sheet.columns, range.firstColumn),
                      .columnEnd = findLine(sheet.columns, range.endColumn)};
      if (area.rowBegin < area.rowEnd && area.columnBegin < area.columnEnd) {
        _areas.push_back(area);
      }
    }
  }
  std::ranges::sort(_areas, {}, &Area::rowBegin);
}

std::vector<std::uint32_t> const& RuledPositions::findColumns(std::uint32_t row) {
  std::erase_if(_reaching, [&](Area const& area) { return area.rowEnd <= row; });
  for (; _next < _areas.size() && _areas[_next].rowBegin <= row; ++_next) {
    if (_areas[_next].rowEnd > row) {
      _reaching.push_back(_areas[_next]);
    }
  }
  _columns.clear();
  if (_reaching.empty()) {
    return _columns;
  }
  std::ranges::fill(_changes, 0);
  for (auto const& area : _reaching) {
    ++_changes[area.columnBegin];
    --_changes[area.columnEnd];
  }
  std::int32_t depth = 0;
  for (std::uint32_t column = 0; column + 1 < _changes.size(); ++column) {
    depth += _changes[column];
    if (depth > 0) {
      _columns.push_back(column);
    }
  }
  return _columns;
}

}  // namespace Zorv::Render
