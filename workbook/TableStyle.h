#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "DOM/StyleProps.h"
#include "Utils/TableRange.h"

namespace Zorv::Workbook {

/// Part of a table that its style formats (ISO/IEC 29500-1, 18.18.93). Later ones lie over earlier
/// ones.
enum class TablePart : std::uint8_t {
  WholeTable,
  FirstColumnStripe,
  SecondColumnStripe,
  FirstRowStripe,
  SecondRowStripe,
  LastColumn,
  FirstColumn,
  HeaderRow,
  TotalRow,
  FirstHeaderCell,
  LastHeaderCell,
  FirstTotalCell,
  LastTotalCell,
};

/// Format of a part of a table.
struct TablePartFormat {
  DOM::RunProps run;    ///< of the characters
  DOM::CellProps cell;  ///< its border lines lie around the part, not around each cell
  /// The lines between the columns of the part.
  std::optional<DOM::BorderLine> vertical = std::nullopt;
  /// The lines between the rows of the part.
  std::optional<DOM::BorderLine> horizontal = std::nullopt;
};

/// Part of a table and its format, which several parts may share.
struct TableStyleElement {
  TablePart part = TablePart::WholeTable;         ///< what it formats
  std::shared_ptr<TablePartFormat const> format;  ///< never null
};

/// Style of tables (ISO/IEC 29500-1, 18.8.83).
struct TableStyle {
  std::vector<TableStyleElement> elements;           ///< ascending by part
  std::array<unsigned long, 2> rowStripes{1, 1};     ///< rows of the first and the second stripe
  std::array<unsigned long, 2> columnStripes{1, 1};  ///< columns of the stripes
};

/// Table with a style (ISO/IEC 29500-1, 18.5.1.2 and 18.5.1.5).
struct StyledTable {
  TableRange range;                         ///< header row and totals row included; not empty
  std::shared_ptr<TableStyle const> style;  ///< never null
  bool hasHeaderRow = true;                 ///< the first row is the header
  bool hasTotalsRow = false;                ///< the last row has totals
  bool marksFirstColumn = false;            ///< the first column has a look of its own
  bool marksLastColumn = false;             ///< the last column has a look of its own
  bool hasRowStripes = false;               ///< rows look different by turns
  bool hasColumnStripes = false;            ///< columns look different by turns
};

}  // namespace Zorv::Workbook
