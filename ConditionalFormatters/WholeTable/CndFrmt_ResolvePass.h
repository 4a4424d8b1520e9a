#pragma once

#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"

namespace Zorv::ConditionalFormatters {

/// Visits the resolved cells of a pass; see TableResolver::visit().
void resolveCells(PreparedTable const& table, TablePass const& pass, CellVisitor const& visitor);

}  // namespace Zorv::ConditionalFormatters
