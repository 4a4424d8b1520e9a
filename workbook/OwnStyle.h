#pragma once

#include <cstddef>

#include "DOM/CellInfo.h"
#include "DOM/CellStyle.h"
#include "DOM/SharedStyle.h"
#include "workbook/Document.h"
#include "workbook/Export.h"

namespace Zorv::Workbook {

/// The style that a position of a sheet has without its conditional formats: the cell's own one;
/// where there is no cell, that of its row, else of its column; else the document's default. In a
/// table with a style, that of the table lies below it. May be null.
[[nodiscard]] ZORV_WORKBOOK_EXPORT DOM::SharedCellStylePtr findSharedOwnStyle(
    Document const& document, std::size_t sheet, DOM::CellInfo const& cell);

/// The same as a value; one that sets nothing where there is none.
[[nodiscard]] ZORV_WORKBOOK_EXPORT DOM::CellStyle findOwnStyle(Document const& document,
                                                               std::size_t sheet,
                                                               DOM::CellInfo const& cell);

}  // namespace Zorv::Workbook
