#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "Utils/TableRange.h"

namespace Zorv::DOM {
class ConditionalFormat;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

/// A conditional format with its ranges at the current positions of rows and columns, in the
/// format's own order; there may be none. The format belongs to its table.
using ConditionalFormatRef =
    std::pair<std::vector<TableRange>, std::reference_wrapper<DOM::ConditionalFormat const>>;

/// A table's live conditional formats in order of priority, the highest first.
using ConditionalFormatRefs = std::vector<ConditionalFormatRef>;

}  // namespace Zorv::ConditionalFormatters
