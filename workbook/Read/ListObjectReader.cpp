#include "workbook/Read/ListObjectReader.h"

#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "workbook/Read/Values.h"
#include "workbook/Xml/OpenXml.h"
#include "workbook/Xml/XmlText.h"
#include "workbook/Xml/XmlTree.h"

namespace Zorv::Workbook {

void readListObject(LoadState& state, std::string const& part, std::size_t sheet) {
  auto const reader = openXml(state.archive, part, PartUse::Whole, state.limits);
  pugi::xml_document document;
  pugi::xml_node const table = readRoot(*reader, document, "table");
  pugi::xml_attribute const displayName = table.attribute("displayName");
  char const* const name = (displayName ? displayName : table.attribute("name")).value();
  auto const range = DOM::A1Notation::parseRange(table.attribute("ref").value());
  if (!range) {
    state.document.addFinding(
        {part, state.document.getSheets()[sheet].name, table.attribute("ref").value(),
         fmt::format("the table \"{}\" has no range of the sheet; it is left out", name)});
    return;
  }
  Formulas::ListObject listObject;
  listObject.name = unescapeXstring(name);
  listObject.table = FormulaModel::DocTableIndex(sheet);
  listObject.range = *range;
  listObject.headerRowCount =
      parseInteger(table.attribute("headerRowCount").value()).value_or(1) > 0 ? 1 : 0;
  listObject.totalsRowCount =
      parseInteger(table.attribute("totalsRowCount").value()).value_or(0) > 0 ? 1 : 0;
  for (pugi::xml_node const column : table.child("tableColumns").children("tableColumn")) {
    listObject.columnNames.push_back(unescapeXstring(column.attribute("name").value()));
  }
  listObject.columnNames.resize(range->endColumn - range->firstColumn);
  state.document.getListObjects().push_back(std::move(listObject));
}

}  // namespace Zorv::Workbook
