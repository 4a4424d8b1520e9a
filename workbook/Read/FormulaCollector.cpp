#include "workbook/Read/FormulaCollector.h"

#include <cstddef>

#include "workbook/Read/CellPlaces.h"
#include "workbook/Read/FormulaReader.h"
#include "workbook/Xml/OpenXml.h"

namespace Zorv::Workbook {

namespace {

void collectFromSheet(LoadState& state, std::size_t sheet, XmlReader& reader,
                      CellFormulas& formulas) {
  CellPlaces places(reader);
  FormulaReader formulaReader(formulas, sheet, reader);
  CellIndex place{RowIndex(0), ColumnIndex(0)};
  for (auto event = reader.next(); event != XmlReader::Event::Finished; event = reader.next()) {
    if (event != XmlReader::Event::Start) {
      continue;
    }
    if (reader.is("row")) {
      places.beginRow();
    } else if (reader.is("c")) {
      place = places.findCell();
    } else if (reader.is("f")) {
      formulaReader.read(place);
      formulaReader.keepCell(place);
      state.memory.take(sizeof(FormulaCell) + formulaReader.getLastText().size());
    } else if (reader.getNamespace() == XmlNamespace::Other) {
      reader.skipElement();
    }
  }
}

}  // namespace

CellFormulas collectFormulas(LoadState& state) {
  CellFormulas formulas;
  for (std::size_t index = 0; index < state.document.getSheets().size(); ++index) {
    Sheet const& sheet = state.document.getSheets()[index];
    if (sheet.isWorksheet) {
      auto const reader = openXml(state.archive, sheet.part, PartUse::Again, state.limits);
      collectFromSheet(state, index, *reader, formulas);
    }
  }
  return formulas;
}

}  // namespace Zorv::Workbook
