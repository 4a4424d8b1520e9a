#pragma once

#include <cstddef>
#include <string>

#include "workbook/Read/LoadState.h"

namespace Zorv::Workbook {

/// Reads a table part (ISO/IEC 29500-1, 18.5.1.2) of a sheet into the document's list objects.
/// Throws PartError if the part is damaged; a table without a usable range becomes a finding.
void readListObject(LoadState& state, std::string const& part, std::size_t sheet);

}  // namespace Zorv::Workbook
