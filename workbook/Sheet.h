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

namespace Zorv::Workbook {

/// Appearance of adjacent columns.
struct ColumnLayout {
  unsigned long first = 0;
  unsigned long end = 0;  ///< the column after the last
  /// In widths of the digit 0 of the default font.
  std::optional<double> width;
  bool hidden = false;
  DOM::SharedCellStylePtr style;  ///< of positions without a cell; may be null
};

/// Appearance of a row.
struct RowLayout {
  unsigned long row = 0;
  std::optional<double> height;  ///< in points
  bool hidden = false;
  DOM::SharedCellStylePtr style;  ///< of positions without a cell; may be null
};

/// Appearance of a sheet besides its cells.
struct SheetLayout {
  std::optional<double> defaultColumnWidth;  ///< in widths of the digit 0 of the default font
  std::optional<double> defaultRowHeight;    ///< in points
  std::vector<ColumnLayout> columns;         ///< those that differ from the default, as written
  std::vector<RowLayout> rows;               ///< those that differ from the default, ascending
  std::vector<TableRange> mergedRanges;
  bool showGridLines = true;
  bool rightToLeft = false;
};

/// One sheet of a document.
struct Sheet {
  std::string name;
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
  SheetLayout layout;
};

}  // namespace Zorv::Workbook
