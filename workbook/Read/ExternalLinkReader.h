#pragma once

#include <cstddef>
#include <string>

#include "workbook/Read/LoadState.h"

namespace Zorv::Workbook {

/// Reads an external link part (ISO/IEC 29500-1, 18.14.7): the cells of another workbook that this
/// one has kept. `number` is the one by which formulas name the workbook, from 1. Sheets of which
/// nothing is kept are left out. Throws PartError if the part is damaged or beyond the limits.
void readExternalLink(LoadState& state, std::string const& part, std::size_t number);

}  // namespace Zorv::Workbook
