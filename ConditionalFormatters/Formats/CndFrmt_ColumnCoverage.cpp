#include "ConditionalFormatters/Formats/CndFrmt_ColumnCoverage.h"

#include <bit>
#include <utility>

namespace Zorv::ConditionalFormatters {

ColumnCoverage::ColumnCoverage(std::vector<unsigned long> borders)
    : _borders(std::move(borders)), _nodes(2 * std::bit_ceil(_borders.size())) {}

unsigned long ColumnCoverage::width() const noexcept { return _nodes[1].width; }

std::vector<ColumnInterval> ColumnCoverage::list() const {
  std::vector<ColumnInterval> intervals;
  if (width() > 0) {
    append(root(), intervals);
  }
  return intervals;
}

void ColumnCoverage::change(ColumnInterval const& columns, std::int32_t by) {
  change(root(), columns, by);
}

void ColumnCoverage::change(Span const& span, ColumnInterval const& columns, std::int32_t by) {
  if (_borders[span.end] <= columns.first || columns.end <= _borders[span.first]) {
    return;
  }
  Node& node = _nodes[span.node];
  if (columns.first <= _borders[span.first] && _borders[span.end] <= columns.end) {
    node.wholeCount += by;
  } else {
    change(span.left(), columns, by);
    change(span.right(), columns, by);
  }
  if (node.wholeCount > 0) {
    node.width = widthOf(span);
  } else {
    node.width = span.isLeaf() ? 0 : _nodes[2 * span.node].width + _nodes[2 * span.node + 1].width;
  }
}

void ColumnCoverage::append(Span const& span, std::vector<ColumnInterval>& intervals) const {
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
