#include "render/Build/ShownLines.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include "render/Build/Lengths.h"

namespace Zorv::Render {

namespace {

using Workbook::ColumnLayout;

/// The layout of each column of a range; null for the default one. Each column is looked at a few
/// times, however many entries overlap.
std::vector<ColumnLayout const*> listColumnLayouts(Workbook::SheetLayout const& layout,
                                                   unsigned long begin, unsigned long end) {
  std::vector<ColumnLayout const*> layouts(end - begin);
  std::vector<std::size_t> nextFree(layouts.size() + 1);
  std::iota(nextFree.begin(), nextFree.end(), std::size_t{0});
  auto const findFree = [&nextFree](std::size_t column) {
    while (nextFree[column] != column) {
      nextFree[column] = nextFree[nextFree[column]];
      column = nextFree[column];
    }
    return column;
  };
  for (ColumnLayout const& entry : layout.columns) {
    std::size_t const last = std::clamp(entry.end, begin, end) - begin;
    auto column = findFree(std::clamp(entry.first, begin, end) - begin);
    for (; column < last; column = findFree(column)) {
      layouts[column] = &entry;
      nextFree[column] = column + 1;
    }
  }
  return layouts;
}

}  // namespace

ShownLines ShownLines::ofRows(Workbook::SheetLayout const& layout, unsigned long begin,
                              unsigned long end) {
  ShownLines lines(begin, end);
  double const usual = findDefaultRowPixels(layout);
  auto next = std::ranges::lower_bound(layout.rows, begin, {}, &Workbook::RowLayout::row);
  for (unsigned long row = begin; row < end; ++row) {
    while (next != layout.rows.end() && next->row < row) {
      ++next;
    }
    bool const isWritten = next != layout.rows.end() && next->row == row;
    Entry entry{.index = row, .size = usual, .style = nullptr};
    bool isHidden = !isWritten && layout.hidesRows;
    if (isWritten) {
      entry.hasOwnSize = next->height.has_value();
      entry.size = next->height ? toRowPixels(*next->height) : usual;
      entry.style = next->style.get();
      isHidden = next->hidden;
    }
    lines.add(entry, isHidden);
  }
  return lines;
}

ShownLines ShownLines::ofColumns(Workbook::SheetLayout const& layout, double digitWidth,
                                 unsigned long begin, unsigned long end) {
  ShownLines lines(begin, end);
  double const usual = findDefaultColumnPixels(layout, digitWidth);
  unsigned long column = begin;
  for (ColumnLayout const* own : listColumnLayouts(layout, begin, end)) {
    Entry entry{.index = column++, .size = usual, .style = nullptr};
    if (own != nullptr) {
      entry.hasOwnSize = own->width.has_value();
      entry.size = own->width ? toColumnPixels(*own->width, digitWidth) : usual;
      entry.style = own->style.get();
    }
    lines.add(entry, own != nullptr && own->hidden);
  }
  return lines;
}

/// A line without a size is not seen either.
void ShownLines::add(Entry const& entry, bool isHidden) {
  _places.push_back(size());
  if (!isHidden && entry.size > 0) {
    _entries.push_back(entry);
  }
}

std::uint32_t ShownLines::atOrAfter(unsigned long index) const noexcept {
  if (index >= _end) {
    return size();
  }
  return index < _begin ? 0 : _places[index - _begin];
}

std::optional<std::uint32_t> ShownLines::find(unsigned long index) const noexcept {
  std::uint32_t const line = atOrAfter(index);
  bool const isShown = line < size() && _entries[line].index == index;
  return isShown ? std::optional(line) : std::nullopt;
}

void ShownLines::grow(std::uint32_t line, double size) noexcept {
  _entries[line].size = std::max(_entries[line].size, size);
}

}  // namespace Zorv::Render
