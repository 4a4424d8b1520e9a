#pragma once

#include <cstdint>
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

/// A format of a table by its index in the table's ConditionalFormatRefs, from 0: the lower, the
/// higher its priority.
using FormatIndex = std::uint32_t;
/// Formats of a table, by their indices.
using FormatIndices = std::vector<FormatIndex>;

}  // namespace Zorv::ConditionalFormatters
