#pragma once

#include "DOM/SharedStyle.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// A rectangle of positions that share one conditional style, which is not null.
struct StyleRun {
  TableRange range;
  DOM::SharedCellStylePtr style;
};

}  // namespace Zorv::ConditionalFormatters
