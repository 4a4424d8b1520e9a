#include "workbook/Read/SheetReader.h"

#include <algorithm>
#include <array>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "workbook/Package/PartError.h"
#include "workbook/Quote.h"
#include "workbook/Read/ListObjectReader.h"
#include "workbook/Read/Values.h"
#include "workbook/Xml/XmlTree.h"

namespace Zorv::Workbook {

struct SheetReader::Entry {
  XmlNamespace ns;
  std::string_view name;
  Handler handler;
};

SheetReader::SheetReader(LoadState& state, std::vector<std::string> const& sharedStrings,
                         StylesReader& styles, std::size_t sheet, XmlReader& reader)
    : _state(state),
      _styles(styles),
      _index(sheet),
      _sheet(state.document.getSheets()[sheet]),
      _reader(reader),
      _relationships(state.archive, _sheet.part, state.limits),
      _cells(state, sharedStrings, styles, sheet, reader),
      _conditionalFormats(state, styles, sheet) {}

void SheetReader::read() {
  _reader.next();
  requireRoot(_reader, XmlNamespace::Spreadsheet, "worksheet");
  for (auto event = _reader.next(); event != XmlReader::Event::Finished; event = _reader.next()) {
    if (event == XmlReader::Event::Start) {
      if (Handler const handler = findHandler(_reader)) {
        (this->*handler)();
      } else if (_reader.getNamespace() == XmlNamespace::Other) {
        skipUnknown();
      }
    }
  }
  _conditionalFormats.finish();
  if (_relationships.findKind("pivotTable") != nullptr) {
    _state.formatUses.setUnknown();
  }
  if (_sheet.conditionalFormatsSwitchedOff && _conditionalFormats.hasReadRules()) {
    addFinding(
        "the sheet asks not to calculate its conditional formats again, which keeps thresholds "
        "that the file does not store; they are resolved all the same");
  }
}

/// Elements of other namespaces may be left out with all that they contain (ISO/IEC 29500-3, 7.2).
void SheetReader::skipUnknown() {
  if (_reader.getName() == "conditionalFormatting") {
    addFinding("conditional formats in a namespace that is not known are left out");
  }
  _reader.skipElement();
}

/// The contents of other elements are searched for those listed here.
SheetReader::Handler SheetReader::findHandler(XmlReader const& reader) noexcept {
  static constexpr std::array entries{
      Entry{XmlNamespace::Spreadsheet, "c", &SheetReader::readCell},
      Entry{XmlNamespace::Spreadsheet, "row", &SheetReader::readRow},
      Entry{XmlNamespace::Spreadsheet, "col", &SheetReader::readColumn},
      Entry{XmlNamespace::Spreadsheet, "sheetPr", &SheetReader::readProperties},
      Entry{XmlNamespace::Spreadsheet, "sheetView", &SheetReader::readView},
      Entry{XmlNamespace::Spreadsheet, "sheetFormatPr", &SheetReader::readFormat},
      Entry{XmlNamespace::Spreadsheet, "mergeCell", &SheetReader::readMerge},
      Entry{XmlNamespace::Spreadsheet, "conditionalFormatting",
            &SheetReader::readConditionalFormatting},
      Entry{XmlNamespace::Extension2009, "conditionalFormatting",
            &SheetReader::readConditionalFormatting},
      Entry{XmlNamespace::Spreadsheet, "tablePart", &SheetReader::readTablePart},
      Entry{XmlNamespace::Spreadsheet, "colorFilter", &SheetReader::readFormatUse},
      Entry{XmlNamespace::Spreadsheet, "sortCondition", &SheetReader::readFormatUse}};
  auto const* const found = std::find_if(entries.begin(), entries.end(), [&reader](Entry const& e) {
    return reader.is(e.ns, e.name);
  });
  return found == entries.end() ? nullptr : found->handler;
}

void SheetReader::readProperties() {
  _sheet.conditionalFormatsSwitchedOff = !getFlag("enableFormatConditionsCalculation", true);
}

void SheetReader::readView() {
  _sheet.layout.showGridLines = getFlag("showGridLines", true);
  _sheet.layout.rightToLeft = getFlag("rightToLeft", false);
}

void SheetReader::readFormat() {
  _sheet.layout.defaultColumnWidth =
      parseNumber(_reader.getAttribute("defaultColWidth").value_or(""));
  _sheet.layout.defaultRowHeight =
      parseNumber(_reader.getAttribute("defaultRowHeight").value_or(""));
}

void SheetReader::readColumn() {
  auto const first = parseInteger(_reader.getAttribute("min").value_or(""));
  auto const last = parseInteger(_reader.getAttribute("max").value_or(""));
  if (!first || !last || *first < 1 || *last < *first) {
    return;
  }
  ColumnLayout column;
  column.first = static_cast<unsigned long>(*first) - 1;
  column.end = std::min(static_cast<unsigned long>(*last), DOM::Table::columnCount);
  column.width = parseNumber(_reader.getAttribute("width").value_or(""));
  column.hidden = getFlag("hidden", false);
  column.style = findStyle("style");
  if (column.first < column.end) {
    _sheet.layout.columns.push_back(std::move(column));
    _state.memory.take(sizeof(ColumnLayout));
  }
}

void SheetReader::readRow() {
  RowLayout row;
  row.row = _cells.beginRow();
  row.height = parseNumber(_reader.getAttribute("ht").value_or(""));
  row.hidden = getFlag("hidden", false);
  row.style = getFlag("customFormat", false) ? findStyle("s") : nullptr;
  if (row.height || row.hidden || row.style) {
    _sheet.layout.rows.push_back(std::move(row));
    _state.memory.take(sizeof(RowLayout));
  }
}

void SheetReader::readCell() { _cells.readCell(); }

void SheetReader::readMerge() {
  std::string_view const reference = _reader.getAttribute("ref").value_or("");
  if (auto const range = DOM::A1Notation::parseRange(reference)) {
    _sheet.layout.mergedRanges.push_back(*range);
    _state.memory.take(sizeof(TableRange));
  } else {
    _state.document.addFinding({_sheet.part, _sheet.name, quote(reference),
                                "the merged area is no range of the sheet; it is left out"});
  }
}

void SheetReader::readConditionalFormatting() {
  pugi::xml_document document;
  _conditionalFormats.read(readTree(_reader, document.root()));
}

/// A table gives names only, so that a damaged one does not refuse the workbook.
void SheetReader::readTablePart() {
  std::string const id(_reader.getAttribute("id", XmlNamespace::Relationships).value_or(""));
  Relationship const* const relationship = _relationships.find(id);
  if (!relationship) {
    addFinding(
        fmt::format("a table is left out: it refers to the relationship \"{}\", which the "
                    "sheet does not have",
                    quote(id)));
    return;
  }
  if (!_tableParts.insert(relationship->target).second) {
    return;
  }
  try {
    readListObject(_state, relationship->target, _index);
  } catch (PartError const& error) {
    _state.document.addFinding(
        {relationship->target, _sheet.name, error.getPlace(),
         fmt::format("the table cannot be read and is left out: {}", error.getProblem())});
  }
}

void SheetReader::readFormatUse() {
  _state.formatUses.note(_reader.getAttribute("dxfId").value_or(""));
}

void SheetReader::addFinding(std::string message) {
  _state.document.addFinding({_sheet.part, _sheet.name, {}, std::move(message)});
}

DOM::SharedCellStylePtr SheetReader::findStyle(std::string_view attribute) const {
  auto const index = parseInteger(_reader.getAttribute(attribute).value_or("0"));
  return index && *index > 0 ? _styles.getCellStyle(static_cast<std::size_t>(*index)) : nullptr;
}

bool SheetReader::getFlag(std::string_view attribute, bool missing) const {
  return parseBoolean(_reader.getAttribute(attribute).value_or("")).value_or(missing);
}

}  // namespace Zorv::Workbook
