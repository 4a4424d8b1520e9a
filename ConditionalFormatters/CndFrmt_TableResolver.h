#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "DOM/CellInfo.h"
#include "DOM/SharedStyle.h"
#include "Utils/TableRange.h"

namespace Zorv::DOM {
class Styles;
class Table;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

class ConditionalFormattingPropsCalculator;
class TableResolverParts;

/// Positions with one and the same conditional style, which is not null.
struct StyleRun {
  TableRange range;
  DOM::SharedCellStylePtr style;
};

/// Resolves many cells of one table: what ConditionalFormattingPropsCalculator::resolve() answers
/// for each of them, the same objects, at a cost that grows with the number of cells and not with
/// its square.
///
/// What resolve() does for each cell is done once: a format's condition is made when the first cell
/// needs it, with the values of its ranges collected and with arguments evaluated that are the same
/// for every cell; styles are flattened once, and merged once for each sequence of them that some
/// cell gets. A cell costs its conditions and one look-up, whatever the number of formats elsewhere
/// in the table.
///
/// Each call of an operation is one pass; date conditions and formulas see one moment in a pass.
/// Assertions and exceptions are those that resolve() gives for the same cell; what failed is tried
/// again for the next cell.
///
/// Lifetime: made by ConditionalFormattingPropsCalculator::prepare(). It borrows the calculator,
/// the styles and the table, which must outlive it, and is good as long as neither they nor the
/// document's values change and the calculator's tables ranges are not cleared: make a new one
/// after a change. Styles that it returned may outlive everything. Threads: the operations may be
/// called from several threads at once, as far as the provider may. A provider that asks back about
/// the resolver's table while it is read must be read by one thread.
class CNDFRMT_EXPORT TableResolver {
public:
  /// Whether a pass over a range sees only cells that exist, or all its positions.
  enum class Positions : bool { Existing, All };

  /// What a pass tells of a cell; the style is null where no format holds.
  using Visitor = std::function<void(DOM::CellInfo const&, DOM::SharedCellStylePtr const&)>;

  /// The same, and the formats that hold for the cell: their places, from 0, among those that
  /// ConditionalFormattingPropsCalculator::getConditionalFormatRefs() gives for the table, in order
  /// of priority up to the first that stops.
  using Explainer = std::function<void(DOM::CellInfo const&, DOM::SharedCellStylePtr const&,
                                       std::span<std::uint32_t const> formats)>;

  TableResolver(TableResolver const&) = delete;
  TableResolver& operator=(TableResolver const&) = delete;
  TableResolver(TableResolver&& other) noexcept;
  TableResolver& operator=(TableResolver&& other) noexcept;
  ~TableResolver();

  /// The style of one cell of the table.
  [[nodiscard]] DOM::SharedCellStylePtr resolve(DOM::CellInfo const& cellInfo) const;

  /// Whether the condition of one format holds for a cell of the table by itself: wherever the
  /// format's ranges lie, whatever its priority and whatever stops before it. The format is named
  /// by its place, as for an Explainer; std::out_of_range is thrown where there is none.
  ///
  /// Answers, asserts and throws what the Operator does that OperatorsFactory creates for the
  /// format; for a cell outside the format's ranges, that may be to stop the process. The moment is
  /// the one that the calling thread has pinned, see OfficeUtils::PinnedMoment: so it can be the
  /// same one for many cells. Where none is, each call has its own.
  [[nodiscard]] bool holds(std::size_t format, DOM::CellInfo const& cellInfo) const;

  /// Calls the visitor for the cells of a range, row by row, each row from the left.
  ///
  /// The work is split over `threadCount` threads, the caller's among them. The visitor is then
  /// called by any of them, but never by two at once, and always in order. What it or a cell throws
  /// ends the pass and reaches the caller once, after the cells before it were visited.
  /// Memory: with several threads, some thousands of cells for each.
  void visit(TableRange const& range, Positions positions, Visitor const& visitor,
             unsigned threadCount = 1) const;

  /// A visit that also tells why cells have their styles.
  void explain(TableRange const& range, Positions positions, Explainer const& explainer,
               unsigned threadCount = 1) const;

  /// The range as rectangles of one style each, ordered by first row, then by first column;
  /// positions without a style are in none. A run is as wide as its style goes on, and as high as
  /// rows repeat it.
  [[nodiscard]] std::vector<StyleRun> resolveRuns(TableRange const& range, Positions positions,
                                                  unsigned threadCount = 1) const;

private:
  friend class ConditionalFormattingPropsCalculator;
  explicit TableResolver(std::unique_ptr<TableResolverParts const> parts) noexcept;

  std::unique_ptr<TableResolverParts const> _parts;
};

}  // namespace Zorv::ConditionalFormatters
