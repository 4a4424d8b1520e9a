#pragma once

#include "ConditionalFormatters/CndFrmt_CellWorker.h"
#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"

namespace Zorv::ConditionalFormatters {

/// Visits the resolved cells of a pass; see TableResolver::visit().
void resolveCells(PreparedTable const& table, TablePass const& pass, CellVisitor const& visitor);
/// The same with work in the threads of the pass.
void resolveCells(PreparedTable const& table, TablePass const& pass,
                  MakeCellWorker const& makeWorker);

}  // namespace Zorv::ConditionalFormatters
