#pragma once

#include <string>

#include "Utils/CellIndex.h"
#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// Positions of one sheet's rows and cells, which a file may leave out where they follow the ones
/// before.
class CellPlaces {
public:
  /// Borrows the reader.
  explicit CellPlaces(XmlReader const& reader) noexcept : _reader(reader) {}

  /// At the start of a `row` element: its index. Throws PartError for a row outside the sheet.
  unsigned long beginRow();

  /// At the start of a `c` element: its place. Throws PartError for a cell outside the sheet.
  [[nodiscard]] CellIndex findCell();

private:
  [[noreturn]] void fail(std::string const& place, std::string const& problem) const;

  XmlReader const& _reader;
  unsigned long _nextRow = 0;
  unsigned long _nextColumn = 0;
  unsigned long _row = 0;
};

}  // namespace Zorv::Workbook
