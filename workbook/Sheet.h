#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "DOM/SharedStyle.h"
#include "DOM/Table.h"
#include "Utils/TableRange.h"
#include "visuals/VisualFormat.h"
#include "workbook/PageLayout.h"
#include "workbook/RichText.h"
#include "workbook/TableStyle.h"

namespace Zorv::Workbook {

/// Appearance of adjacent columns.
struct ColumnLayout {
  unsigned long first = 0;  ///< the first column, from 0
  unsigned long end = 0;    ///< the column after the last
  /// In widths of the digit 0 of the default font.
  std::optional<double> width;
  bool hidden = false;
  DOM::SharedCellStylePtr style;  ///< of positions without a cell; may be null
};

/// Appearance of a row.
struct RowLayout {
  unsigned long row = 0;         ///< from 0
  std::optional<double> height;  ///< in points
  bool hidden = false;
  DOM::SharedCellStylePtr style;  ///< of positions without a cell; may be null
};

/// `DOM::ParaProps::textRotation` of letters that stand upright, one below the other.
inline constexpr int stackedRotation = 255;

/// Appearance of a sheet besides its cells.
struct SheetLayout {
  std::optional<double> defaultColumnWidth;  ///< in widths of the digit 0 of the default font
  unsigned baseColumnWidth = 8;              ///< digits of a column, where no default is written
  std::optional<double> defaultRowHeight;    ///< in points
  bool rowsAreFixed = false;                 ///< rows without a height do not fit their texts
  bool hidesRows = false;                    ///< rows that are not in `rows` are hidden
  std::vector<ColumnLayout> columns;         ///< those that differ from the default, as written
  /// Those that differ from the default, ascending; every row of the file if `hidesRows`.
  std::vector<RowLayout> rows;
  std::vector<TableRange> mergedRanges;  ///< cells that are one
  bool showGridLines = true;
  bool rightToLeft = false;
  /// Rows and columns at the beginning that stay in sight, those above and left of them included.
  unsigned long frozenRows = 0;
  unsigned long frozenColumns = 0;  ///< see `frozenRows`
};

/// Address that the cells of a range lead to (ISO/IEC 29500-1, 18.3.1.47).
struct Hyperlink {
  TableRange range;  ///< the cells that have the address
  /// An address of the schemes http, https and mailto, or a place in the workbook: `#Sheet2!A1`.
  std::string target;
};

/// One sheet of a document.
struct Sheet {
  std::string name;  ///< as its tab shows it
  /// Its part in the file, such as `xl/worksheets/sheet1.xml`.
  std::string part;
  /// Never null. A sheet that is not a worksheet (a chart sheet) has an empty table.
  std::unique_ptr<DOM::Table> table;
  /// Colour scales, data bars and icon sets, by priority.
  Visuals::VisualFormats visualFormats;
  bool isWorksheet = true;
  bool hidden = false;
  /// The file asks not to recalculate the sheet's conditional formats
  /// (`enableFormatConditionsCalculation`, ISO/IEC 29500-1, 18.3.1.82). They are resolved all the
  /// same: the flag keeps earlier thresholds while values change, and here there are no earlier
  /// ones.
  bool conditionalFormatsSwitchedOff = false;
  SheetLayout layout;                 ///< appearance besides the cells
  PageLayout page;                    ///< appearance on paper
  std::vector<Hyperlink> hyperlinks;  ///< as written; other schemes are left out
  std::vector<RichCell> richCells;    ///< ascending by row, then by column
  /// The tables that a style formats, as written. It lies below the cells' own styles.
  std::vector<StyledTable> styledTables;
};

}  // namespace Zorv::Workbook
