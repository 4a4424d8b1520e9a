#pragma once

#include "workbook/Read/LoadState.h"

namespace Zorv::Workbook {

/// Adds to the cells without results those that array formulas without results fill besides their
/// own cell: which have neither a value nor a formula, or do not exist. Formulas that would fill
/// more cells than the workbook may have are marked instead.
///
/// To be called once the cells of all sheets are read.
void addArrayCells(LoadState& state);

}  // namespace Zorv::Workbook
