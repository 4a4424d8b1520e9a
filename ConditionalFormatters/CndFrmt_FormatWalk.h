#pragma once

#include <algorithm>
#include <utility>

#include <boost/optional.hpp>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_StyleHierarchy.h"
#include "DOM/CellInfo.h"
#include "DOM/CellStyle.h"
#include "DOM/ConditionalFormat.h"
#include "DOM/Styles.h"
#include "DOM/TrackChangesViewMode.h"
#include "Utils/UUID.h"

// The rules by which the formats of a table decide about a cell. Whatever resolves cells uses these
// functions, so that there is one order of formats, one hold test, one merge and one stop.
namespace Zorv::ConditionalFormatters {

/// Whether a walk over formats goes on with those of lower priority.
enum class WalkStep : bool { Continue, Stop };

/// Whether one of the format's ranges contains the cell's current position. A format without ranges
/// holds no cell.
[[nodiscard]] inline bool holdsCell(ConditionalFormatRef const& formatRef,
                                    DOM::CellInfo const& cellInfo) noexcept {
  return std::any_of(formatRef.first.begin(), formatRef.first.end(), [&](TableRange const& range) {
    return range.contains(cellInfo.getRowIndex(), cellInfo.getColIndex());
  });
}

/// What a format that holds means for those after it.
[[nodiscard]] inline WalkStep stepAfter(DOM::ConditionalFormat const& format) noexcept {
  return format.getStopCalculateConditions() ? WalkStep::Stop : WalkStep::Continue;
}

/// Judges a cell by one format whose ranges hold it.
///
/// `obtainOperator(formatRef)` gives the format's condition as anything that points to it; then
/// `obtainValue()` gives the FormulaValueData, or a reference to one. Both live until the judgement
/// ends. Where the condition holds, `onHolds(formatRef)` is called and tells how the walk goes on.
template <class ObtainOperator, class ObtainValue, class OnHolds>
[[nodiscard]] WalkStep judgeByFormat(ConditionalFormatRef const& formatRef,
                                     ObtainOperator const& obtainOperator,
                                     ObtainValue const& obtainValue, OnHolds const& onHolds) {
  auto const& condition = obtainOperator(formatRef);
  auto const& value = obtainValue();
  return (*condition)(value) ? onHolds(formatRef) : WalkStep::Continue;
}

/// Walks the formats of a table in order of priority, judging the cell by those whose ranges hold
/// it, until one of them stops the walk. See judgeByFormat() for the parameters.
///
/// Of a format that does not hold the cell nothing but the ranges is looked at; the stop flag of
/// one whose condition is false is not looked at either.
template <class ObtainOperator, class ObtainValue, class OnHolds>
void walkFormats(ConditionalFormatRefs const& formatRefs, DOM::CellInfo const& cellInfo,
                 ObtainOperator const& obtainOperator, ObtainValue const& obtainValue,
                 OnHolds const& onHolds) {
  for (ConditionalFormatRef const& formatRef : formatRefs) {
    if (holdsCell(formatRef, cellInfo) &&
        judgeByFormat(formatRef, obtainOperator, obtainValue, onHolds) == WalkStep::Stop) {
      return;
    }
  }
}

/// Everything that a named style sets, by itself and by inheritance. Sets nothing where there is no
/// style of that identity.
[[nodiscard]] inline DOM::CellStyle flattenNamedStyle(DOM::Styles const& styles,
                                                      UUID const& styleUUID) {
  DOM::CellStyle style;
  style.setParentUUID(styleUUID);
  return DOM::getOverridenAllPropsWithParentStyles(styles, style, DOM::TrackChangesViewMode::Final);
}

/// Merges the flattened style of a format under those of the formats before it: the first format
/// that sets a property decides it.
inline void mergeUnder(boost::optional<DOM::CellStyle>& accumulated, DOM::CellStyle flattened) {
  if (accumulated) {
    override(flattened, *accumulated);
  }
  accumulated = std::move(flattened);
}

}  // namespace Zorv::ConditionalFormatters
