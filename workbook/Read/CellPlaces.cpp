#include "workbook/Read/CellPlaces.h"

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "DOM/Table.h"
#include "workbook/Package/PartError.h"
#include "workbook/Quote.h"
#include "workbook/Read/Values.h"

namespace Zorv::Workbook {

unsigned long CellPlaces::beginRow() {
  if (auto const text = _reader.getAttribute("r")) {
    auto const number = parseInteger(*text);
    if (!number) {
      fail(fmt::format("row \"{}\"", quote(*text)),
           "is no number of a row; the file is damaged, fetch it anew");
    }
    if (*number < 1 || static_cast<unsigned long>(*number) > DOM::Table::rowCount) {
      fail(fmt::format("row {}", *number), "lies outside the sheet; the file is damaged");
    }
    _row = static_cast<unsigned long>(*number) - 1;
  } else {
    _row = _nextRow;
  }
  _nextRow = _row + 1;
  _nextColumn = 0;
  return _row;
}

CellIndex CellPlaces::findCell() {
  if (auto const reference = _reader.getAttribute("r")) {
    auto const place = DOM::A1Notation::parseCell(*reference);
    if (!place) {
      fail(reference->empty() ? fmt::format("a cell after row {}", _row + 1)
                              : fmt::format("cell {}", quote(*reference)),
           "is no cell of the sheet; the file is damaged");
    }
    _nextColumn = place->getColumn().get() + 1;
    return *place;
  }
  if (_row >= DOM::Table::rowCount || _nextColumn >= DOM::Table::columnCount) {
    fail(fmt::format("row {}", _row + 1), "has more cells than a sheet has columns");
  }
  return {RowIndex(_row), ColumnIndex(_nextColumn++)};
}

void CellPlaces::fail(std::string const& place, std::string const& problem) const {
  throw PartError(_reader.getPartName(), place, problem);
}

}  // namespace Zorv::Workbook
