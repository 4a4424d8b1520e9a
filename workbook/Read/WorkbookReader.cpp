#include "workbook/Read/WorkbookReader.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

#include <fmt/format.h>

#include "Formulas/ParseExpr.h"
#include "Utils/CaseFolding.h"
#include "workbook/Package/PartError.h"
#include "workbook/Quote.h"
#include "workbook/Read/ExternalLinkReader.h"
#include "workbook/Read/SheetReader.h"
#include "workbook/Read/Values.h"
#include "workbook/Xml/OpenXml.h"
#include "workbook/Xml/XmlText.h"
#include "workbook/Xml/XmlTree.h"

namespace Zorv::Workbook {

namespace {

std::string findMainPart(LoadState& state) {
  Relationships const package(state.archive, "", state.limits);
  Relationship const* const main = package.findKind("officeDocument");
  if (!main) {
    throw PartError({}, {},
                    state.archive.has("META-INF/manifest.xml")
                        ? "is an OpenDocument file; save it as .xlsx and try again"
                        : "is no .xlsx workbook: the archive names no main part (_rels/.rels)");
  }
  if (main->target.ends_with(".bin")) {
    throw PartError(main->target, {},
                    "is a workbook in binary parts (.xlsb); save it as .xlsx and try again");
  }
  return main->target;
}

/// Names that programs reserve, such as those of print areas.
bool isReservedName(std::string_view name) noexcept { return name.starts_with("_xlnm."); }

}  // namespace

WorkbookReader::WorkbookReader(LoadState& state)
    : _state(state),
      _mainPart(findMainPart(state)),
      _relationships(state.archive, _mainPart, state.limits) {}

void WorkbookReader::read() {
  readMainPart();
  Palette palette(readTheme());
  StylesReader styles(palette, _state.document.getStyles());
  readStyles(styles);
  _state.document.setPalette(palette.listNamed());
  SharedStrings const sharedStrings = readSharedStrings(palette);
  for (std::size_t index = 0; index < _state.document.getSheets().size(); ++index) {
    Sheet const& sheet = _state.document.getSheets()[index];
    if (sheet.isWorksheet) {
      auto const reader = openXml(_state.archive, sheet.part, PartUse::Streamed, _state.limits);
      SheetReader(_state, sharedStrings, styles, index, *reader).read();
    }
  }
  reportColours(palette);
  _state.document.setUnusedFormats(_state.formatUses.findUnused());
}

void WorkbookReader::readMainPart() {
  auto const reader = openXml(_state.archive, _mainPart, PartUse::Whole, _state.limits);
  reader->next();
  if (reader->getName() != "workbook") {
    throw PartError(
        _mainPart, {},
        fmt::format("is no workbook: its root element is \"{}\"", quote(reader->getName())));
  }
  requireRoot(*reader, XmlNamespace::Spreadsheet, "workbook");
  pugi::xml_document document;
  pugi::xml_node const workbook = readTree(*reader, document.root());
  reader->next();
  if (parseBoolean(workbook.child("workbookPr").attribute("date1904").value()).value_or(false)) {
    _state.document.setDateSystem(OfficeUtils::DateSystem::Since1904);
  }
  listSheets(workbook);
  readDefinedNames(workbook);
  readExternalLinks(workbook);
}

void WorkbookReader::listSheets(pugi::xml_node workbook) {
  for (pugi::xml_node const element : workbook.child("sheets").children("sheet")) {
    addSheet(element);
  }
  auto const& sheets = _state.document.getSheets();
  if (std::ranges::none_of(sheets, [](Sheet const& sheet) { return !sheet.part.empty(); })) {
    throw PartError(_mainPart, "sheets", "the workbook has no sheet; the file is damaged");
  }
}

/// Every element gives a sheet, since local names count the elements. One that cannot be read as a
/// worksheet has an empty table.
void WorkbookReader::addSheet(pugi::xml_node element) {
  Sheet sheet;
  sheet.name = unescapeXstring(element.attribute("name").value());
  std::string_view const state = element.attribute("state").value();
  sheet.hidden = state == "hidden" || state == "veryHidden";
  sheet.table = std::make_unique<DOM::Table>();
  std::string const place = fmt::format("sheet \"{}\"", quote(sheet.name));
  if (_state.document.getSheets().size() >= _state.limits.sheets) {
    throw PartError(_mainPart, place,
                    fmt::format("the workbook has more than {} sheets, which is the limit",
                                _state.limits.sheets));
  }
  findSheetPart(element.attribute("r:id").value(), place, sheet);
  checkSheetName(sheet);
  _state.document.getSheets().push_back(std::move(sheet));
}

void WorkbookReader::findSheetPart(std::string_view id, std::string const& place, Sheet& sheet) {
  sheet.isWorksheet = false;
  if (id.empty()) {
    addFinding(sheet,
               "the sheet has no part in the file, as old module sheets have none; it is left out");
    return;
  }
  Relationship const* const relationship = _relationships.find(id);
  if (!relationship) {
    throw PartError(_mainPart, place,
                    fmt::format("refers to the relationship \"{}\", which the workbook does not "
                                "have; the file is damaged",
                                quote(id)));
  }
  sheet.part = relationship->target;
  if (relationship->kind != "worksheet") {
    addFinding(sheet, fmt::format("the sheet is no worksheet but of the kind \"{}\"; its cells and "
                                  "conditional formats are not read",
                                  quote(relationship->kind)));
    return;
  }
  if (!_state.archive.has(sheet.part)) {
    throw PartError(quote(sheet.part), place, "is missing from the file; the file is damaged");
  }
  sheet.isWorksheet = _sheetParts.insert(foldCase(sheet.part)).second;
  if (!sheet.isWorksheet) {
    addFinding(sheet, "an earlier sheet has the same part in the file; this one is left empty");
  }
}

void WorkbookReader::checkSheetName(Sheet const& sheet) {
  if (!_sheetNames.insert(foldCase(sheet.name)).second) {
    addFinding(sheet,
               "an earlier sheet has this name, apart from letter case; formulas that name the "
               "sheet mean the earlier one");
  }
}

void WorkbookReader::addFinding(Sheet const& sheet, std::string message) {
  _state.document.addFinding({_mainPart, sheet.name, {}, std::move(message)});
}

void WorkbookReader::readDefinedNames(pugi::xml_node workbook) {
  for (pugi::xml_node const element : workbook.child("definedNames").children("definedName")) {
    addDefinedName(element);
  }
  _state.volatileWords = VolatileWords(_state.document.getDefinedNames());
}

void WorkbookReader::addDefinedName(pugi::xml_node element) {
  DefinedName name;
  name.name = unescapeXstring(element.attribute("name").value());
  name.formulaText = unescapeXstring(trimXmlSpaces(element.text().get()));
  if (pugi::xml_attribute const sheet = element.attribute("localSheetId")) {
    auto const index = parseInteger(sheet.value());
    if (!index || *index < 0 ||
        static_cast<std::size_t>(*index) >= _state.document.getSheets().size()) {
      addFinding(
          fmt::format("the name \"{}\" belongs to a sheet that the workbook does not "
                      "have; it is left out",
                      quote(name.name)));
      return;
    }
    name.sheet = static_cast<std::size_t>(*index);
  }
  if (_state.document.getDefinedNames().size() >= _state.limits.definedNames) {
    throw PartError(_mainPart, "definedNames",
                    fmt::format("the workbook has more than {} names, which is the limit",
                                _state.limits.definedNames));
  }
  _state.countFormula(name.formulaText, _mainPart);
  parse(name);
  _state.document.getDefinedNames().push_back(std::move(name));
}

void WorkbookReader::parse(DefinedName& name) {
  try {
    name.expr = Formulas::parseDefinedName(name.formulaText);
  } catch (Formulas::FormulaParseError const& error) {
    if (!isReservedName(name.name)) {
      addFinding(fmt::format("the name \"{}\" stands for \"{}\", which cannot be read: {}",
                             quote(name.name), quote(name.formulaText), error.what()));
    }
  }
}

void WorkbookReader::addFinding(std::string message) {
  _state.document.addFinding({_mainPart, {}, {}, std::move(message)});
}

/// Formulas name the links by their place in the list. A link that cannot be read leaves the
/// formulas that use it without values.
void WorkbookReader::readExternalLinks(pugi::xml_node workbook) {
  std::size_t number = 0;
  std::unordered_set<std::string> parts;
  for (pugi::xml_node const element :
       workbook.child("externalReferences").children("externalReference")) {
    ++number;
    Relationship const* const link = _relationships.find(element.attribute("r:id").value());
    if (link == nullptr || !parts.insert(foldCase(link->target)).second) {
      addFinding(
          fmt::format("the link [{}] to another workbook names no part of its own; it is left "
                      "out",
                      number));
      continue;
    }
    try {
      readExternalLink(_state, link->target, number);
    } catch (PartError const& error) {
      _state.document.addFinding(
          {link->target,
           {},
           {},
           fmt::format("the link [{}] to another workbook cannot be read: {}", number,
                       error.getProblem())});
    }
  }
}

/// A theme gives colours only, so that a damaged one does not refuse the workbook.
ThemeColours WorkbookReader::readTheme() {
  std::string const part = findPart("theme");
  if (part.empty()) {
    return getDefaultThemeColours();
  }
  try {
    auto const reader = openXml(_state.archive, part, PartUse::Whole, _state.limits);
    pugi::xml_document document;
    return readThemeColours(readRoot(*reader, document, "theme"));
  } catch (PartError const& error) {
    _state.document.addFinding(
        {part,
         {},
         {},
         fmt::format("the theme cannot be read, and its colours are the usual ones: {}",
                     error.getProblem())});
    return getDefaultThemeColours();
  }
}

void WorkbookReader::readStyles(StylesReader& styles) {
  std::string const part = findPart("styles");
  if (part.empty()) {
    return;
  }
  auto const reader = openXml(_state.archive, part, PartUse::Whole, _state.limits);
  pugi::xml_document document;
  pugi::xml_node const styleSheet = readRoot(*reader, document, "styleSheet");
  styles.read(styleSheet, _state.document.getCellStyleFactory(), _state.limits.formats);
  _state.formatUses.setCount(styles.getDifferentialStyleCount());
  _state.formatUses.noteAll(styleSheet.child("tableStyles"));
  if (styles.isBeyondLimit()) {
    throw PartError(part, {},
                    fmt::format("the workbook has more than {} fonts, fills, borders, cell formats "
                                "or differential formats, which is the limit",
                                _state.limits.formats));
  }
  _state.document.setDefaultCellStyle(styles.getCellStyle(0));
}

SharedStrings WorkbookReader::readSharedStrings(Palette& palette) {
  std::string const part = findPart("sharedStrings");
  if (part.empty()) {
    return {};
  }
  auto const reader = openXml(_state.archive, part, PartUse::Streamed, _state.limits);
  return Workbook::readSharedStrings(*reader, _state, palette);
}

/// Colours that cannot be read are told at the end: rules may have formats of their own.
void WorkbookReader::reportColours(Palette const& palette) {
  if (palette.getUnknownCount() > 0) {
    _state.document.addFinding(
        {findPart("styles"),
         {},
         {},
         fmt::format("{} of formats cannot be read and {} left out, {}: {}",
                     palette.getUnknownCount() == 1
                         ? std::string("a colour")
                         : fmt::format("{} colours", palette.getUnknownCount()),
                     palette.getUnknownCount() == 1 ? "is" : "are",
                     palette.getUnknownCount() == 1 ? "this one" : "this one first",
                     palette.getFirstUnknown())});
  }
}

std::string WorkbookReader::findPart(std::string_view kind) {
  Relationship const* const relationship = _relationships.findKind(kind);
  if (!relationship) {
    return {};
  }
  if (!_state.archive.has(relationship->target)) {
    _state.document.addFinding(
        {relationship->target,
         {},
         {},
         "the part is missing from the file; the workbook is read without it"});
    return {};
  }
  return relationship->target;
}

}  // namespace Zorv::Workbook
