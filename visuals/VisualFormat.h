#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/TableRangeByID.h"
#include "visuals/ColourScale.h"
#include "visuals/DataBar.h"
#include "visuals/Export.h"
#include "visuals/IconSet.h"

namespace Zorv::Visuals {

/// Drawing of a visual format.
using VisualKind = std::variant<ColourScale, DataBar, IconSet>;

/// The thresholds of what is drawn, in order. Borrows it.
[[nodiscard]] ZORV_VISUALS_EXPORT std::vector<Threshold const*> listThresholds(
    VisualKind const& kind);

/// Visual format of a table: a colour scale, a data bar or an icon set, and the cells that get it.
struct VisualFormat {
  std::vector<DOM::TableRangeByID> ranges;  ///< the cells that get it
  VisualKind kind;                          ///< drawn in them
  /// The format draws only where this formula is true. It is written as seen from the top-left cell
  /// of the ranges.
  std::optional<DOM::FormulaSyntaxTree::Expr> condition{};
  /// How many of the table's conditional formats have a higher priority.
  std::size_t formatsBefore = 0;
};

/// The visual formats of a table by priority, the highest first; none is null. They do not move in
/// memory.
using VisualFormats = std::vector<std::unique_ptr<VisualFormat const>>;

}  // namespace Zorv::Visuals
