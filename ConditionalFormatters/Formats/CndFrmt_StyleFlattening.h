#pragma once

#include <utility>

#include <boost/optional.hpp>

#include "ConditionalFormatters/CndFrmt_StyleHierarchy.h"
#include "DOM/CellStyle.h"
#include "DOM/Styles.h"
#include "DOM/TrackChangesViewMode.h"
#include "Utils/UUID.h"

namespace Zorv::ConditionalFormatters {

/// Everything that a named style sets, itself and by inheritance. Sets nothing if there is no style
/// of that identity.
[[nodiscard]] inline DOM::CellStyle flattenNamedStyle(DOM::Styles const& styles,
                                                      UUID const& styleUUID) {
  DOM::CellStyle style;
  style.setParentUUID(styleUUID);
  return DOM::getOverridenAllPropsWithParentStyles(styles, style, DOM::TrackChangesViewMode::Final);
}

/// Merges the flattened style of a format under the styles of formats of higher priority: the first
/// format that sets a property decides it.
inline void mergeUnder(boost::optional<DOM::CellStyle>& accumulated, DOM::CellStyle flattened) {
  if (accumulated) {
    override(flattened, *accumulated);
  }
  accumulated = std::move(flattened);
}

}  // namespace Zorv::ConditionalFormatters
