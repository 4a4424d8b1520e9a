#pragma once

#include <string>

#include "visuals/CellVisuals.h"
#include "visuals/VisualFormat.h"

/// Colour scales, data bars and icon sets in words.
namespace Zorv::Words {

/// Visuals of a cell: `scale #F8696B`, `bar 37% #638EC6`, `icon 3Arrows 2 of 3`, separated by
/// commas; then `value hidden`. Empty if there is nothing.
[[nodiscard]] std::string describe(Visuals::CellVisuals const& visuals);

/// Visual of one kind of a cell.
[[nodiscard]] std::string describeOf(Visuals::CellVisuals const& visuals,
                                     Visuals::VisualKind const& kind);

/// By what a visual format decides: `colour scale: lowest, percentile 50, highest`,
/// `icon set: >= 33 %, > 67 %`. Formulas are as the file writes them.
[[nodiscard]] std::string describeThresholds(Visuals::VisualKind const& kind);

/// Drawing of a visual format: `#F8696B, #FFEB84, #63BE7B`; `bar #638EC6, solid`; `icons 3Arrows,
/// reversed`.
[[nodiscard]] std::string describeDrawing(Visuals::VisualKind const& kind);

/// The same with all details, such as the lengths of bars and the colours of their axis.
[[nodiscard]] std::string describeWholeDrawing(Visuals::VisualKind const& kind);

}  // namespace Zorv::Words
