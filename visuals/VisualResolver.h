#pragma once

#include <memory>

#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "DOM/CellInfo.h"
#include "visuals/CellVisuals.h"
#include "visuals/Export.h"
#include "visuals/ThresholdError.h"
#include "visuals/VisualSources.h"

namespace Zorv::Visuals {

class PreparedVisuals;

/// Resolves the visual formats of one table for many cells.
///
/// A cell gets a colour, a bar and an icon, each from the first of its visual formats that draws
/// one. Formats draw on numbers alone: not on texts, truth values, errors and empty cells. A
/// conditional format that holds and stops the evaluation hides the visual formats after it. A
/// format that fails for a cell draws nothing there, nor do later ones of its kind. A cell that
/// could not be resolved has no visuals.
///
/// Thresholds are found once, when the first cell needs them, from the existing cells of the
/// format's ranges; each cell counts once. Those whose formulas depend on the moment are found once
/// for each pass. Numbers that are not finite do not count.
///
/// Lifetime: borrows its sources, which must outlive it. Good as long as they do not change.
/// Threads: the operations may be called from several threads at once, as far as the provider may.
/// Cost: linear in the cells of the ranges for the thresholds, then constant for each cell.
class ZORV_VISUALS_EXPORT VisualResolver {
public:
  /// Borrows the sources; evaluates nothing.
  explicit VisualResolver(VisualSources const& sources);
  VisualResolver(VisualResolver const&) = delete;
  VisualResolver& operator=(VisualResolver const&) = delete;
  VisualResolver(VisualResolver&& other) noexcept;
  VisualResolver& operator=(VisualResolver&& other) noexcept;
  ~VisualResolver();

  /// The visuals of one cell of the table. Throws ThresholdError, and what the provider, the
  /// formulas and the conditional formats throw.
  [[nodiscard]] CellVisuals resolve(DOM::CellInfo const& cellInfo) const;

  /// Visits the cells of a pass as TableResolver::visit() does, with their visuals. The pass's
  /// threads share the work. Spends a step of the budget for each format that is drawn and each
  /// cell that thresholds are found from, and memory for the numbers of percentiles.
  void visit(ConditionalFormatters::TablePass const& pass, VisualVisitor const& visitor) const;

private:
  std::unique_ptr<PreparedVisuals const> _prepared;
};

}  // namespace Zorv::Visuals
