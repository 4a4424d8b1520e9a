#include "workbook/Read/WorkbookReader.h"

#include <cstddef>
#include <memory>
#include <utility>

#include <fmt/format.h>

#include "Formulas/ParseExpr.h"
#include "workbook/Package/PartError.h"
#include "workbook/Read/SharedStrings.h"
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
bool isReserved(std::string_view name) noexcept { return name.starts_with("_xlnm."); }

}  // namespace

WorkbookReader::WorkbookReader(LoadState& state)
    : _state(state),
      _mainPart(findMainPart(state)),
      _relationships(state.archive, _mainPart, state.limits) {}

void WorkbookReader::read() {
  readMainPart();
  StylesReader styles(readTheme(), _state.document.getStyles());
  readStyles(styles);
  std::vector<std::string> const sharedStrings = readSharedStrings();
  for (std::size_t index = 0; index < _state.document.getSheets().size(); ++index) {
    Sheet const& sheet = _state.document.getSheets()[index];
    if (sheet.isWorksheet) {
      auto const reader = openXml(_state.archive, sheet.part, PartUse::Streamed, _state.limits);
      SheetReader(_state, sharedStrings, styles, index, *reader).read();
    }
  }
}

void WorkbookReader::readMainPart() {
  auto const reader = openXml(_state.archive, _mainPart, PartUse::Whole, _state.limits);
  reader->next();
  if (!reader->is("workbook")) {
    throw PartError(_mainPart, {},
                    fmt::format("is no workbook: its root element is \"{}\"", reader->getName()));
  }
  pugi::xml_document document;
  pugi::xml_node const workbook = readTree(*reader, document.root());
  reader->next();
  if (parseBoolean(workbook.child("workbookPr").attribute("date1904").value()).value_or(false)) {
    _state.document.setDateSystem(OfficeUtils::DateSystem::Since1904);
  }
  listSheets(workbook);
  readDefinedNames(workbook);
}

void WorkbookReader::listSheets(pugi::xml_node workbook) {
  for (pugi::xml_node const element : workbook.child("sheets").children("sheet")) {
    addSheet(element);
  }
  if (_state.document.getSheets().empty()) {
    throw PartError(_mainPart, "sheets", "the workbook has no sheet; the file is damaged");
  }
}

void WorkbookReader::addSheet(pugi::xml_node element) {
  Sheet sheet;
  sheet.name = unescapeXstring(element.attribute("name").value());
  std::string_view const state = element.attribute("state").value();
  sheet.hidden = state == "hidden" || state == "veryHidden";
  std::string const place = fmt::format("sheet \"{}\"", sheet.name);
  Relationship const* const relationship = _relationships.find(element.attribute("r:id").value());
  if (!relationship) {
    throw PartError(_mainPart, place,
                    fmt::format("refers to the relationship \"{}\", which the workbook does not "
                                "have; the file is damaged",
                                element.attribute("r:id").value()));
  }
  if (_state.document.getSheets().size() >= _state.limits.sheets) {
    throw PartError(_mainPart, place,
                    fmt::format("the workbook has more than {} sheets, which is the limit",
                                _state.limits.sheets));
  }
  sheet.part = relationship->target;
  sheet.isWorksheet = relationship->kind == "worksheet";
  sheet.table = std::make_unique<DOM::Table>();
  if (!_state.archive.has(sheet.part)) {
    throw PartError(sheet.part, place, "is missing from the file; the file is damaged");
  }
  _state.document.getSheets().push_back(std::move(sheet));
}

void WorkbookReader::readDefinedNames(pugi::xml_node workbook) {
  for (pugi::xml_node const element : workbook.child("definedNames").children("definedName")) {
    addDefinedName(element);
  }
}

void WorkbookReader::addDefinedName(pugi::xml_node element) {
  DefinedName name;
  name.name = unescapeXstring(element.attribute("name").value());
  name.formulaText = unescapeXstring(trimXmlSpaces(element.text().get()));
  if (pugi::xml_attribute const sheet = element.attribute("localSheetId")) {
    auto const index = parseInteger(sheet.value());
    if (!index || *index < 0 ||
        static_cast<std::size_t>(*index) >= _state.document.getSheets().size()) {
      _state.document.addFinding(
          {_mainPart,
           {},
           {},
           fmt::format("the name \"{}\" belongs to a sheet that the workbook does not "
                       "have; it is left out",
                       name.name)});
      return;
    }
    name.sheet = static_cast<std::size_t>(*index);
  }
  try {
    name.expr = Formulas::parseExpr(name.formulaText);
  } catch (Formulas::FormulaParseError const& error) {
    if (!isReserved(name.name)) {
      _state.document.addFinding(
          {_mainPart,
           {},
           {},
           fmt::format("the name \"{}\" stands for \"{}\", which cannot be read: {}", name.name,
                       name.formulaText, error.what())});
    }
  }
  _state.document.getDefinedNames().push_back(std::move(name));
}

ThemeColours WorkbookReader::readTheme() {
  std::string const part = findPart("theme");
  if (part.empty()) {
    return getDefaultThemeColours();
  }
  auto const reader = openXml(_state.archive, part, PartUse::Whole, _state.limits);
  pugi::xml_document document;
  return readThemeColours(readRoot(*reader, document, "theme"));
}

void WorkbookReader::readStyles(StylesReader& styles) {
  std::string const part = findPart("styles");
  if (part.empty()) {
    return;
  }
  auto const reader = openXml(_state.archive, part, PartUse::Whole, _state.limits);
  pugi::xml_document document;
  styles.read(readRoot(*reader, document, "styleSheet"), _state.document.getCellStyleFactory());
  _state.document.setDefaultCellStyle(styles.getCellStyle(0));
}

std::vector<std::string> WorkbookReader::readSharedStrings() {
  std::string const part = findPart("sharedStrings");
  if (part.empty()) {
    return {};
  }
  auto const reader = openXml(_state.archive, part, PartUse::Whole, _state.limits);
  return Workbook::readSharedStrings(*reader);
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
