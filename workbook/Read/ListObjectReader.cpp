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

struct TablePlace {
  std::string const& part;
  std::size_t sheet;
};

bool getFlag(pugi::xml_node element, char const* name) {
  return parseBoolean(element.attribute(name).value()).value_or(false);
}

/// A table without a style, or without its name, shows its cells as they are.
void addStyle(LoadState& state, TableStyles& styles, TablePlace const& place, pugi::xml_node table,
              Formulas::ListObject const& listObject) {
  pugi::xml_node const info = table.child("tableStyleInfo");
  std::string const name = unescapeXstring(info.attribute("name").value());
  if (name.empty()) {
    return;
  }
  Sheet& sheet = state.document.getSheets()[place.sheet];
  auto style = styles.find(name);
  if (style == nullptr || sheet.styledTables.size() >= state.limits.styledTables) {
    state.document.addFinding(
        {place.part, sheet.name, quote(listObject.name),
         style == nullptr
             ? fmt::format("the table's style \"{}\" is not known; it is left out", quote(name))
             : fmt::format("the sheet has more than {} tables with a style, which is the limit; "
                           "this one's is left out",
                           state.limits.styledTables)});
    return;
  }
  state.memory.take(sizeof(StyledTable));
  sheet.styledTables.push_back({.range = listObject.range,
                                .style = std::move(style),
                                .hasHeaderRow = listObject.headerRowCount > 0,
                                .hasTotalsRow = listObject.totalsRowCount > 0,
                                .marksFirstColumn = getFlag(info, "showFirstColumn"),
                                .marksLastColumn = getFlag(info, "showLastColumn"),
                                .hasRowStripes = getFlag(info, "showRowStripes"),
                                .hasColumnStripes = getFlag(info, "showColumnStripes")});
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

void readListObject(LoadState& state, TableStyles& styles, std::string const& part,
                    std::size_t sheet) {
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
  addStyle(state, styles, {part, sheet}, table, listObject);
  listObject.table = FormulaModel::DocTableIndex(sheet);
  state.document.getListObjects().push_back(std::move(listObject));
}

}  // namespace Zorv::Workbook
