#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"

namespace Zorv::ConditionalFormatters {

/// Columns from `first` up to `end`, which lies outside.
struct ColumnInterval {
  unsigned long first;
  unsigned long end;

  friend bool operator==(ColumnInterval const&, ColumnInterval const&) noexcept = default;
};

/// Multiset of column intervals, each with a format: which formats cover a column, and which
/// columns are covered at all. A segment tree over the columns at which intervals may begin or end.
class ColumnFormats {
public:
  /// `borders`: every first and end column of the intervals to come, ascending, each once.
  /// Borrowed.
  explicit ColumnFormats(std::span<unsigned long const> borders);

  /// Adds an interval that is not empty, or removes one that was added. Logarithmic in the borders,
  /// and moves the formats that cover the same columns.
  void add(ColumnInterval const& columns, FormatIndex format);
  void remove(ColumnInterval const& columns, FormatIndex format);

  /// How many columns are covered.
  [[nodiscard]] unsigned long width() const noexcept;

  /// The covered columns as intervals that do not touch, ascending. Costs their number, times a
  /// logarithm.
  [[nodiscard]] std::vector<ColumnInterval> list() const;

  /// Formats that cover a column, and the number of intervals that do.
  struct Cover {
    FormatIndices formats;  ///< ascending, each once
    std::uint64_t intervalCount = 0;
  };
  /// Writes what covers the columns from one border up to the next. Costs a logarithm, and the
  /// number of formats at most as often.
  void find(std::size_t border, Cover& cover) const;

private:
  struct FormatCount {
    FormatIndex format;
    std::uint32_t count;
  };
  /// A node covers the columns between two borders, given by their indices.
  struct Node {
    std::vector<FormatCount> formats;  ///< of intervals that cover all of the node, but not its
                                       ///< parent; ascending
    unsigned long width = 0;           ///< of its covered columns
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
  /// Calls `changeFormats(formats)` for the nodes that make up an interval.
  template <class ChangeFormats>
  void change(Span const& span, ColumnInterval const& columns, ChangeFormats const& changeFormats);
  void append(Span const& span, std::vector<ColumnInterval>& intervals) const;

  std::span<unsigned long const> _borders;
  std::vector<Node> _nodes;  ///< the children of node n are 2n and 2n+1; the root is 1
};

}  // namespace Zorv::ConditionalFormatters
