#include "workbook/Read/ListObjectReader.h"

#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "workbook/Package/PartError.h"
#include "workbook/Quote.h"
#include "workbook/Read/Values.h"
#include "workbook/Xml/OpenXml.h"
#include "workbook/Xml/XmlText.h"
#include "workbook/Xml/XmlTree.h"

namespace Zorv::Workbook {

namespace {

Formulas::ListObject readElement(pugi::xml_node table, char const* name, TableRange const& range) {
  Formulas::ListObject listObject;
  listObject.name = unescapeXstring(name);
  listObject.range = range;
  listObject.headerRowCount =
      parseInteger(table.attribute("headerRowCount").value()).value_or(1) > 0 ? 1 : 0;
  listObject.totalsRowCount =
      parseInteger(table.attribute("totalsRowCount").value()).value_or(0) > 0 ? 1 : 0;
  for (pugi::xml_node const column : table.child("tableColumns").children("tableColumn")) {
    listObject.columnNames.push_back(unescapeXstring(column.attribute("name").value()));
  }
  listObject.columnNames.resize(range.endColumn - range.firstColumn);
  return listObject;
}

/// Throws PartError beyond the limit.
void countColumns(LoadState& state, std::string const& part, TableRange const& range) {
  state.tableColumnCount += range.endColumn - range.firstColumn;
  if (state.tableColumnCount > state.limits.tableColumns) {
    throw PartError(part, {},
                    fmt::format("the tables of the workbook have more than {} columns, which is "
                                "the limit",
                                state.limits.tableColumns));
  }
}

}  // namespace

void readListObject(LoadState& state, std::string const& part, std::size_t sheet) {
  auto const reader = openXml(state.archive, part, PartUse::Whole, state.limits);
  pugi::xml_document document;
  pugi::xml_node const table = readRoot(*reader, document, "table");
  pugi::xml_attribute const displayName = table.attribute("displayName");
  char const* const name = (displayName ? displayName : table.attribute("name")).value();
  auto const range = DOM::A1Notation::parseRange(table.attribute("ref").value());
  if (!range) {
    state.document.addFinding(
        {part, state.document.getSheets()[sheet].name, quote(table.attribute("ref").value()),
         fmt::format("the table \"{}\" has no range of the sheet; it is left out", quote(name))});
    return;
  }
  countColumns(state, part, *range);
  state.formatUses.noteAll(table);
  Formulas::ListObject listObject = readElement(table, name, *range);
  listObject.table = FormulaModel::DocTableIndex(sheet);
  state.document.getListObjects().push_back(std::move(listObject));
}

}  // namespace Zorv::Workbook
