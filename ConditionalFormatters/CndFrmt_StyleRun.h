#pragma once

#include "DOM/SharedStyle.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// A rectangle of positions that share one conditional style, which is not null.
struct StyleRun {
  TableRange range;               ///< the rectangle
  DOM::SharedCellStylePtr style;  ///< never null
};

}  // namespace Zorv::ConditionalFormatters
