#include "workbook/Read/SheetReader.h"

#include <algorithm>
#include <array>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "workbook/Package/PartError.h"
#include "workbook/Quote.h"
#include "workbook/Read/LinkTarget.h"
#include "workbook/Read/ListObjectReader.h"
#include "workbook/Read/Values.h"
#include "workbook/Xml/XmlTree.h"

namespace Zorv::Workbook {

struct SheetReader::Entry {
  XmlNamespace ns;
  std::string_view name;
  Handler handler;
};

SheetReader::SheetReader(LoadState& state, SharedStrings const& sharedStrings, StylesReader& styles,
                         std::size_t sheet, XmlReader& reader)
    : _state(state),
      _styles(styles),
      _index(sheet),
      _sheet(state.document.getSheets()[sheet]),
      _reader(reader),
      _relationships(state.archive, _sheet.part, state.limits),
      _cells(state, sharedStrings, styles, sheet, reader),
      _conditionalFormats(state, styles, sheet),
      _page(_sheet.page, reader) {}

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
  _cells.finish();
  _conditionalFormats.finish();
  _page.finish();
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
      Entry{XmlNamespace::Spreadsheet, "pane", &SheetReader::readPane},
      Entry{XmlNamespace::Spreadsheet, "sheetFormatPr", &SheetReader::readFormat},
      Entry{XmlNamespace::Spreadsheet, "mergeCell", &SheetReader::readMerge},
      Entry{XmlNamespace::Spreadsheet, "hyperlink", &SheetReader::readHyperlink},
      Entry{XmlNamespace::Spreadsheet, "conditionalFormatting",
            &SheetReader::readConditionalFormatting},
      Entry{XmlNamespace::Extension2009, "conditionalFormatting",
            &SheetReader::readConditionalFormatting},
      Entry{XmlNamespace::Spreadsheet, "tablePart", &SheetReader::readTablePart},
      Entry{XmlNamespace::Spreadsheet, "colorFilter", &SheetReader::readFormatUse},
      Entry{XmlNamespace::Spreadsheet, "sortCondition", &SheetReader::readFormatUse},
      Entry{XmlNamespace::Spreadsheet, "pageSetUpPr", &SheetReader::readPageElement},
      Entry{XmlNamespace::Spreadsheet, "pageMargins", &SheetReader::readPageElement},
      Entry{XmlNamespace::Spreadsheet, "pageSetup", &SheetReader::readPageElement},
      Entry{XmlNamespace::Spreadsheet, "printOptions", &SheetReader::readPageElement},
      Entry{XmlNamespace::Spreadsheet, "rowBreaks", &SheetReader::readPageElement},
      Entry{XmlNamespace::Spreadsheet, "colBreaks", &SheetReader::readPageElement},
      Entry{XmlNamespace::Spreadsheet, "brk", &SheetReader::readPageElement},
      Entry{XmlNamespace::Spreadsheet, "headerFooter", &SheetReader::readPageTexts},
      Entry{XmlNamespace::Spreadsheet, "customSheetViews", &SheetReader::skipViews}};
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
  _viewCorner = findCorner("topLeftCell");
}

/// The splits count rows and columns of a frozen pane, from the view's corner on
/// (ISO/IEC 29500-1, 18.3.1.66); of a movable one, they are lengths.
void SheetReader::readPane() {
  std::string_view const state = _reader.getAttribute("state").value_or("split");
  if (state == "split") {
    return;
  }
  _sheet.layout.frozenRows = findSplit("ySplit", _viewCorner.getRow().get(), DOM::Table::rowCount);
  _sheet.layout.frozenColumns =
      findSplit("xSplit", _viewCorner.getColumn().get(), DOM::Table::columnCount);
}

/// The line after those of a split that begins at `first`; 0 without a split.
unsigned long SheetReader::findSplit(std::string_view attribute, unsigned long first,
                                     unsigned long end) const {
  auto const count = parseNumber(_reader.getAttribute(attribute).value_or("")).value_or(0);
  double const last = std::min(static_cast<double>(first) + count, static_cast<double>(end));
  return count >= 1 ? static_cast<unsigned long>(last) : 0;
}

void SheetReader::readFormat() {
  _sheet.layout.defaultColumnWidth =
      parseNumber(_reader.getAttribute("defaultColWidth").value_or(""));
  auto const digits = parseInteger(_reader.getAttribute("baseColWidth").value_or(""));
  constexpr long mostDigits = 255;
  if (digits && 0 <= *digits && *digits <= mostDigits) {
    _sheet.layout.baseColumnWidth = static_cast<unsigned>(*digits);
  }
  _sheet.layout.defaultRowHeight =
      parseNumber(_reader.getAttribute("defaultRowHeight").value_or(""));
  _sheet.layout.rowsAreFixed = getFlag("customHeight", false);
  _sheet.layout.hidesRows = getFlag("zeroHeight", false);
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
  if (row.height || row.hidden || row.style || _sheet.layout.hidesRows) {
    _sheet.layout.rows.push_back(std::move(row));
    _state.memory.take(sizeof(RowLayout));
  }
  _cells.readPlainCells();
}

void SheetReader::readCell() {
  _cells.readCell();
  _cells.readPlainCells();
}

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

void SheetReader::readHyperlink() {
  auto const range = DOM::A1Notation::parseRange(_reader.getAttribute("ref").value_or(""));
  if (!range || _state.hyperlinkCount > _state.limits.hyperlinks) {
    return;
  }
  std::string const id(_reader.getAttribute("id", XmlNamespace::Relationships).value_or(""));
  Relationship const* const external = _relationships.findExternal(id);
  std::string_view const place = _reader.getAttribute("location").value_or("");
  auto target = makeLinkTarget(external != nullptr ? external->target : std::string(), place);
  if (!target) {
    return;
  }
  if (++_state.hyperlinkCount > _state.limits.hyperlinks) {
    addFinding(
        fmt::format("the workbook has more than {} hyperlinks, which is the limit; later "
                    "ones are left out",
                    _state.limits.hyperlinks));
    return;
  }
  _state.memory.take(sizeof(Hyperlink) + target->size());
  _sheet.hyperlinks.push_back({*range, *std::move(target)});
}

void SheetReader::readPageElement() { _page.readElement(); }

void SheetReader::readPageTexts() { _page.readTexts(); }

/// Each of these views, which their users saved, has page elements of its own.
void SheetReader::skipViews() { _reader.skipElement(); }

void SheetReader::readConditionalFormatting() {
  pugi::xml_document document;
  _conditionalFormats.read(readTree(_reader, document.root()));
}

/// A table gives names and looks only, so that a damaged one does not refuse the workbook.
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
    readListObject(_state, _styles.getTableStyles(), relationship->target, _index);
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

/// The cell that an attribute names; A1 if it names none.
CellIndex SheetReader::findCorner(std::string_view attribute) const {
  return DOM::A1Notation::parseCell(_reader.getAttribute(attribute).value_or(""))
      .value_or(CellIndex(RowIndex(0), ColumnIndex(0)));
}

bool SheetReader::getFlag(std::string_view attribute, bool missing) const {
  return parseBoolean(_reader.getAttribute(attribute).value_or("")).value_or(missing);
}

}  // namespace Zorv::Workbook
