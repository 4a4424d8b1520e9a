#pragma once

#include <cstddef>
#include <string>

#include "workbook/Read/LoadState.h"
#include "workbook/Read/TableStyles.h"

namespace Zorv::Workbook {

/// Reads a table part (ISO/IEC 29500-1, 18.5.1.2) of a sheet into the document's list objects, and
/// into the sheet's styled tables if it has a style. Throws PartError if the part is damaged; a
/// table without a usable range becomes a finding, as does a style that nobody knows.
void readListObject(LoadState& state, TableStyles& styles, std::string const& part,
                    std::size_t sheet);

}  // namespace Zorv::Workbook
