#include "ConditionalFormatters/Formats/CndFrmt_ColumnFormats.h"

#include <algorithm>
#include <bit>

#include "ConditionalFormatters/Formats/CndFrmt_SortUnique.h"

namespace Zorv::ConditionalFormatters {

ColumnFormats::ColumnFormats(std::span<unsigned long const> borders)
    : _borders(borders), _nodes(2 * std::bit_ceil(_borders.size())) {}

void ColumnFormats::add(ColumnInterval const& columns, FormatIndex format) {
  change(root(), columns, [format](std::vector<FormatCount>& formats) {
    auto const found = std::ranges::lower_bound(formats, format, {}, &FormatCount::format);
    if (found != formats.end() && found->format == format) {
      ++found->count;
    } else {
      formats.insert(found, {format, 1});
    }
  });
}

void ColumnFormats::remove(ColumnInterval const& columns, FormatIndex format) {
  change(root(), columns, [format](std::vector<FormatCount>& formats) {
    auto const found = std::ranges::lower_bound(formats, format, {}, &FormatCount::format);
    if (--found->count == 0) {
      formats.erase(found);
    }
  });
}

unsigned long ColumnFormats::width() const noexcept { return _nodes[1].width; }

std::vector<ColumnInterval> ColumnFormats::list() const {
  std::vector<ColumnInterval> intervals;
  append(root(), intervals);
  return intervals;
}

void ColumnFormats::find(std::size_t border, Cover& cover) const {
  cover.formats.clear();
  cover.intervalCount = 0;
  std::size_t nodesWithFormats = 0;
  for (Span span = root(); _nodes[span.node].width > 0;) {
    Node const& node = _nodes[span.node];
    nodesWithFormats += node.formats.empty() ? 0 : 1;
    for (FormatCount const& entry : node.formats) {
      cover.formats.push_back(entry.format);
      cover.intervalCount += entry.count;
    }
    if (span.isLeaf()) {
      break;
    }
    span = border < span.middle() ? span.left() : span.right();
  }
  if (nodesWithFormats > 1) {
    sortUnique(cover.formats);
  }
}

template <class ChangeFormats>
void ColumnFormats::change(Span const& span, ColumnInterval const& columns,
                           ChangeFormats const& changeFormats) {
  if (_borders[span.end] <= columns.first || columns.end <= _borders[span.first]) {
    return;
  }
  Node& node = _nodes[span.node];
  if (columns.first <= _borders[span.first] && _borders[span.end] <= columns.end) {
    changeFormats(node.formats);
  } else {
    change(span.left(), columns, changeFormats);
    change(span.right(), columns, changeFormats);
  }
  if (!node.formats.empty()) {
    node.width = widthOf(span);
  } else {
    node.width = span.isLeaf() ? 0 : _nodes[2 * span.node].width + _nodes[2 * span.node + 1].width;
  }
}

void ColumnFormats::append(Span const& span, std::vector<ColumnInterval>& intervals) const {
  Node const& node = _nodes[span.node];
  if (node.width == 0) {
    return;
  }
  if (node.width < widthOf(span)) {
    append(span.left(), intervals);
    append(span.right(), intervals);
    return;
  }
  unsigned long const first = _borders[span.first];
  unsigned long const end = _borders[span.end];
  if (!intervals.empty() && intervals.back().end == first) {
    intervals.back().end = end;
  } else {
    intervals.push_back({first, end});
  }
}

}  // namespace Zorv::ConditionalFormatters
