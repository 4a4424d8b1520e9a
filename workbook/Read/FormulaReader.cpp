#include "workbook/Read/FormulaReader.h"

#include <optional>
#include <string_view>
#include <utility>

#include "DOM/A1Notation.h"

namespace Zorv::Workbook {

namespace {

/// The cells of an array formula in its first cell, if there are several.
std::optional<TableRange> findArea(std::string_view reference, CellIndex place) noexcept {
  auto const area = DOM::A1Notation::parseRange(reference);
  bool const hasSeveralCells =
      area && place == CellIndex(RowIndex(area->firstRow), ColumnIndex(area->firstColumn)) &&
      (area->endRow - area->firstRow > 1 || area->endColumn - area->firstColumn > 1);
  return hasSeveralCells ? area : std::nullopt;
}

}  // namespace

void FormulaReader::read(CellIndex place) {
  auto const type = _reader.getAttribute("t").value_or("normal");
  bool const isArray = type == "array";
  auto const area =
      isArray ? findArea(_reader.getAttribute("ref").value_or(""), place) : std::nullopt;
  _lastGroup = type == "shared" ? _reader.getAttribute("si").value_or("") : "";
  bool const isTable = type == "dataTable";
  std::string text = _reader.readElementText();
  // The text of a data table is not a formula.
  _last = {{isTable ? std::string() : std::move(text), place, !_lastGroup.empty(), isArray, area},
           std::nullopt};
  if (!_lastGroup.empty() && !_last.source.text.empty()) {
    _shared.insert_or_assign(_lastGroup, _last);
  }
}

/// Cells of a group without a formula of their own share that of the group's first cell.
FormulaReader::Formula& FormulaReader::findFormula() {
  auto const shared = _lastGroup.empty() ? _shared.end() : _shared.find(_lastGroup);
  return shared == _shared.end() ? _last : shared->second;
}

void FormulaReader::keepCell(CellIndex place) {
  Formula& formula = findFormula();
  if (!formula.index) {
    formula.index = static_cast<std::uint32_t>(_kept.formulas.size());
    _kept.formulas.push_back(formula.source);
  }
  _kept.cells.push_back({static_cast<std::uint32_t>(_sheet),
                         static_cast<std::uint32_t>(place.getColumn().get()),
                         static_cast<std::uint32_t>(place.getRow().get()), *formula.index});
}

}  // namespace Zorv::Workbook
