#include "workbook/Read/StylesReader.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>

#include "workbook/Read/FormatElements.h"
#include "workbook/Read/Values.h"

namespace Zorv::Workbook {

namespace {

std::vector<pugi::xml_node> listChildren(pugi::xml_node parent) {
  std::vector<pugi::xml_node> children;
  for (pugi::xml_node const child : parent) {
    if (child.type() == pugi::node_element) {
      children.push_back(child);
    }
  }
  return children;
}

/// The entry whose index an attribute of a cell format gives; null if there is none.
template <class Entry>
Entry const* pick(std::vector<Entry> const& entries, pugi::xml_attribute attribute) {
  auto const index = parseInteger(attribute.value());
  bool const known = index && *index >= 0 && static_cast<std::size_t>(*index) < entries.size();
  return known ? &entries[static_cast<std::size_t>(*index)] : nullptr;
}

/// Sets what the entry sets, if there is one.
template <class Props>
void apply(Props const* entry, Props& props) {
  if (entry != nullptr) {
    override(props, *entry);
  }
}

/// Attribute of a cell format, or of the format that it is based on.
pugi::xml_attribute pickAttribute(pugi::xml_node format, pugi::xml_node base, char const* name) {
  pugi::xml_attribute const own = format.attribute(name);
  return own ? own : base.attribute(name);
}

constexpr std::array listNames{"fonts", "fills", "borders", "cellStyleXfs", "cellXfs", "dxfs"};

}  // namespace

void StylesReader::read(pugi::xml_node styleSheet, DOM::SharedObjectFactory const& factory,
                        std::size_t formatLimit) {
  _isBeyondLimit = std::ranges::any_of(listNames, [&](char const* name) {
    return listChildren(styleSheet.child(name)).size() > formatLimit;
  });
  if (_isBeyondLimit) {
    return;
  }
  readIndexedColours(styleSheet.child("colors").child("indexedColors"));
  _numberFormats.add(styleSheet.child("numFmts"));
  Tables const tables = readTables(styleSheet);
  for (pugi::xml_node const format : listChildren(styleSheet.child("cellXfs"))) {
    _cellStyles.push_back(factory.create(readCellFormat(format, tables)));
  }
  for (pugi::xml_node const dxf : listChildren(styleSheet.child("dxfs"))) {
    std::string name = "differential format " + std::to_string(_differentialStyles.size());
    _differentialStyles.push_back(addDifferentialStyle(dxf, std::move(name)));
  }
  _tableStyles.read(styleSheet);
}

StylesReader::Tables StylesReader::readTables(pugi::xml_node styleSheet) {
  Tables tables;
  for (pugi::xml_node const font : listChildren(styleSheet.child("fonts"))) {
    readFont(font, _palette, tables.fonts.emplace_back());
  }
  for (pugi::xml_node const fill : listChildren(styleSheet.child("fills"))) {
    readCellFill(fill, _palette, tables.fills.emplace_back());
  }
  for (pugi::xml_node const border : listChildren(styleSheet.child("borders"))) {
    readBorder(border, _palette, tables.borders.emplace_back());
  }
  for (pugi::xml_node const format : listChildren(styleSheet.child("cellStyleXfs"))) {
    tables.baseFormats.push_back({format, format.child("alignment"), format.child("protection")});
  }
  return tables;
}

DOM::SharedCellStylePtr const& StylesReader::getCellStyle(std::size_t index) const noexcept {
  static DOM::SharedCellStylePtr const none;
  return index < _cellStyles.size() ? _cellStyles[index] : none;
}

UUID StylesReader::getDifferentialStyle(std::size_t index) const noexcept {
  return index < _differentialStyles.size() ? _differentialStyles[index] : UUID();
}

UUID StylesReader::addDifferentialStyle(pugi::xml_node dxf, std::string name) {
  DOM::RunProps run;
  DOM::ParaProps para;
  DOM::CellProps cell;
  readFont(dxf.child("font"), _palette, run);
  readAlignment(dxf.child("alignment"), para, cell);
  readBorder(dxf.child("border"), _palette, cell);
  readProtection(dxf.child("protection"), cell);
  readDifferentialFill(dxf.child("fill"), _palette, cell);
  DOM::NamedTableStyle style(std::move(name));
  style.setRunProps(shareIfSet(run));
  style.setParaProps(shareIfSet(para));
  style.setCellProps(shareIfSet(cell));
  if (pugi::xml_node const format = dxf.child("numFmt")) {
    std::string code = format.attribute("formatCode").value();
    auto const formatId = parseInteger(format.attribute("numFmtId").value());
    style.setCellFormat(code.empty() && formatId ? _numberFormats.find(*formatId)
                                                 : shareFormat(std::move(code)));
  }
  UUID const uuid = UUID::generate();
  _styles.getTableStyles().emplace(uuid, std::move(style));
  return uuid;
}

void StylesReader::readIndexedColours(pugi::xml_node colours) {
  std::vector<DOM::Colour> indexed;
  for (pugi::xml_node const colour : colours.children("rgbColor")) {
    indexed.push_back(parseColour(colour.attribute("rgb").value()).value_or(DOM::Colour()));
  }
  _palette.setIndexed(indexed);
}

/// A cell format's own indices are used whatever its `apply` flags say: programs write all of them.
/// The format that it is based on supplies only those that are missing.
DOM::CellStyle StylesReader::readCellFormat(pugi::xml_node format, Tables const& tables) const {
  BaseFormat const* const found = pick(tables.baseFormats, format.attribute("xfId"));
  BaseFormat const base = found != nullptr ? *found : BaseFormat();
  pugi::xml_node const alignment = format.child("alignment");
  pugi::xml_node const protection = format.child("protection");
  DOM::RunProps run;
  DOM::ParaProps para;
  DOM::CellProps cell;
  apply(pick(tables.fonts, pickAttribute(format, base.element, "fontId")), run);
  readAlignment(alignment ? alignment : base.alignment, para, cell);
  apply(pick(tables.borders, pickAttribute(format, base.element, "borderId")), cell);
  readProtection(protection ? protection : base.protection, cell);
  apply(pick(tables.fills, pickAttribute(format, base.element, "fillId")), cell);
  DOM::CellStyle style;
  style.setRunProps(shareIfSet(run));
  style.setParaProps(shareIfSet(para));
  style.setCellProps(shareIfSet(cell));
  auto const formatId = parseInteger(pickAttribute(format, base.element, "numFmtId").value());
  style.setCellFormat(formatId ? _numberFormats.find(*formatId) : nullptr);
  return style;
}

}  // namespace Zorv::Workbook
