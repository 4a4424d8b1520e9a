#pragma once

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"

namespace Zorv::DOM {
class Table;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

/// The table's live formats in order of priority, each with its ranges at the current positions. A
/// null among the table's formats stops the process. Throws what the host throws.
[[nodiscard]] ConditionalFormatRefs makeConditionalFormatRefs(DOM::Table const& table);

}  // namespace Zorv::ConditionalFormatters
