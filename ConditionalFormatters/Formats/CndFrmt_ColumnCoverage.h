#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Zorv::ConditionalFormatters {

/// Columns from `first` up to `end`, which lies outside.
struct ColumnInterval {
  unsigned long first;
  unsigned long end;

  friend bool operator==(ColumnInterval const&, ColumnInterval const&) noexcept = default;
};

/// Multiset of column intervals that knows which columns at least one of them covers: a segment
/// tree over the columns at which intervals may begin or end.
class ColumnCoverage {
public:
  /// `borders`: every first and end column of the intervals to come, ascending, each once.
  explicit ColumnCoverage(std::vector<unsigned long> borders);

  /// Adds an interval that is not empty, or removes one that was added. Logarithmic.
  void add(ColumnInterval const& columns) { change(columns, +1); }
  void remove(ColumnInterval const& columns) { change(columns, -1); }

  /// How many columns are covered.
  [[nodiscard]] unsigned long width() const noexcept;

  /// The covered columns as intervals that do not touch, ascending. Costs their number, times a
  /// logarithm.
  [[nodiscard]] std::vector<ColumnInterval> list() const;

private:
  /// A node covers the columns between two borders, told by their indices.
  struct Node {
    std::int32_t wholeCount = 0;  ///< intervals that cover all of the node, but not its parent
    unsigned long width = 0;      ///< of its covered columns
  };
  struct Span {
    std::size_t node;
    std::size_t first;
    std::size_t end;

    [[nodiscard]] std::size_t middle() const noexcept { return first + (end - first) / 2; }
    [[nodiscard]] Span left() const noexcept { return {2 * node, first, middle()}; }
    [[nodiscard]] Span right() const noexcept { return {2 * node + 1, middle(), end}; }
    [[nodiscard]] bool isLeaf() const noexcept { return end - first == 1; }
  };

  [[nodiscard]] Span root() const noexcept { return {1, 0, _borders.size() - 1}; }
  [[nodiscard]] unsigned long widthOf(Span const& span) const noexcept {
    return _borders[span.end] - _borders[span.first];
  }
  void change(ColumnInterval const& columns, std::int32_t by);
  void change(Span const& span, ColumnInterval const& columns, std::int32_t by);
  void append(Span const& span, std::vector<ColumnInterval>& intervals) const;

  std::vector<unsigned long> _borders;
  std::vector<Node> _nodes;  ///< the children of node n are 2n and 2n+1; the root is 1
};

}  // namespace Zorv::ConditionalFormatters
