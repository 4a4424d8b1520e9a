#pragma once

#include <vector>

#include "ConditionalFormatters/CndFrmt_StyleRun.h"
#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"

namespace Zorv::ConditionalFormatters {

/// The cells of a pass as runs; see TableResolver::resolveRuns().
[[nodiscard]] std::vector<StyleRun> resolveIntoRuns(PreparedTable const& table,
                                                    TablePass const& pass);

}  // namespace Zorv::ConditionalFormatters
