#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "render/Picture.h"

namespace Zorv::Render {

/// The distinct sets of lines of a picture's cells; the first has no lines.
class EdgeTable {
public:
  EdgeTable() : _edges(1) {}

  [[nodiscard]] std::uint32_t intern(CellEdges const& edges);
  [[nodiscard]] std::vector<CellEdges> take() && noexcept { return std::move(_edges); }

private:
  std::vector<CellEdges> _edges;
  std::unordered_multimap<std::size_t, std::uint32_t> _byHash;
};

/// Finds the lines of edges that two cells share, row by row from the top.
///
/// The stronger line counts: the thicker one, then the one of a conditional format, then that of
/// the cell further left or up.
/// Cost: linear in the columns for rows next to one with lines; constant for others.
class EdgeRows {
public:
  /// Borrows both; `cells` may grow meanwhile.
  EdgeRows(std::uint32_t columnCount, EdgeTable& table, std::vector<PictureCell>& cells);

  static constexpr std::uint32_t noCell = UINT32_MAX;

  /// A position of the current row with the lines of its style, which are borrowed until two rows
  /// have been ended; and the index of its cell, or noCell.
  void add(std::uint32_t column, CellEdges const& edges, bool isConditional, std::uint32_t cell);

  /// Ends the current row; the lines of the row above are then known.
  void endRow();
  /// Ends the last row.
  void finish();

private:
  struct Place {
    CellEdges const* edges = nullptr;
    bool isConditional = false;
    std::uint32_t cell = noCell;
  };
  struct Row {
    explicit Row(std::uint32_t columnCount) : places(columnCount) {}
    void clear();

    std::vector<Place> places;
    std::vector<DOM::BorderLine> top;  ///< the lines above; empty for none
    bool isUsed = false;
    bool hasLines = false;
  };

  [[nodiscard]] static DOM::BorderLine findStronger(Place const& first,
                                                    DOM::BorderLine CellEdges::*firstSide,
                                                    Place const& second,
                                                    DOM::BorderLine CellEdges::*secondSide);
  void writeRow(Row const& row, std::vector<DOM::BorderLine> const& bottom);

  EdgeTable& _table;
  std::vector<PictureCell>& _cells;
  Row _above;
  Row _current;
  std::vector<DOM::BorderLine> _between;  ///< the lines between the two rows; empty for none
};

}  // namespace Zorv::Render
