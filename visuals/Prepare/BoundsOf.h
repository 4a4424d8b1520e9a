#pragma once

#include "Utils/CellIndex.h"
#include "visuals/Draw/Bounds.h"
#include "visuals/Prepare/FormulaEvaluator.h"
#include "visuals/Prepare/NumberStatistics.h"
#include "visuals/VisualFormat.h"

namespace Zorv::Visuals {

/// True if the thresholds may depend on the current date and time, or on chance.
[[nodiscard]] bool dependsOnMoment(VisualKind const& kind);

/// Finds the thresholds of a visual format as numbers. The source's ranges are the format's, and
/// the base cell their top-left cell. Throws ThresholdError where a formula gives no number, and
/// what the engine, the provider and the budget throw.
[[nodiscard]] Bounds findBounds(VisualKind const& kind, NumberStatistics::Source const& source,
                                CellIndex baseCell, FormulaEvaluator& formulas);

}  // namespace Zorv::Visuals
