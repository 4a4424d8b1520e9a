#pragma once

#include <vector>

#include "Utils/TableRange.h"
#include "Utils/WorkBudget.h"
#include "workbook/Document.h"

namespace Zorv::Analysis {

/// A sheet of a document. Borrows the document.
struct DocumentSheet {
  Workbook::Document const* document = nullptr;
  std::size_t sheet = 0;
};

/// The positions at which two versions of a sheet are compared: those in the ranges of the rules of
/// either.
///
/// A range of more than 10,000 positions is looked at inside the used range of both sheets, and at
/// its own edges: its corners, and its sides along the used rows and columns, unless such a side
/// has more than 10,000 positions. Where that leaves more than 5,000,000 positions, only existing
/// cells are left of the inside. Memory: one range for each range of a rule, or for each run of
/// existing cells.
[[nodiscard]] std::vector<TableRange> findComparedAreas(DocumentSheet const& first,
                                                        DocumentSheet const& second);

}  // namespace Zorv::Analysis
