#pragma once

#include <cstddef>
#include <vector>

#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// Ranges in which single positions are looked up, in any order; for walks see FormatCursor.
///
/// Immutable. Cost: `n log n` for n ranges; a look-up costs `log n` for each range that crosses the
/// row of the position. Threads: may be asked from several threads at once.
class PointIndex {
public:
  explicit PointIndex(std::vector<TableRange> ranges);

  /// True if one of the ranges holds the position.
  [[nodiscard]] bool contains(unsigned long row, unsigned long column) const noexcept;

private:
  /// A node of the tree, and the leaves below it, counted from the first range.
  struct Node {
    std::size_t index;
    std::size_t firstLeaf;
    std::size_t leafCount;
  };

  [[nodiscard]] bool contains(Node const& node, unsigned long row,
                              unsigned long column) const noexcept;

  std::vector<TableRange> _ranges;  ///< by first row
  /// A binary tree over the ranges: the children of node i are 2i and 2i + 1, the leaves are the
  /// last ones. A node holds the end of the last row below it.
  std::vector<unsigned long> _endRows;
  std::size_t _leafCount = 1;  ///< a power of two
};

}  // namespace Zorv::ConditionalFormatters
