#include "workbook/Read/StylesReader.h"

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

/// The element whose index an attribute of a cell format gives; an empty node if there is none.
pugi::xml_node pick(std::vector<pugi::xml_node> const& elements, pugi::xml_attribute attribute) {
  auto const index = parseInteger(attribute.value());
  bool const known = index && *index >= 0 && static_cast<std::size_t>(*index) < elements.size();
  return known ? elements[static_cast<std::size_t>(*index)] : pugi::xml_node();
}

/// Attribute of a cell format, or of the format that it is based on.
pugi::xml_attribute pickAttribute(pugi::xml_node format, pugi::xml_node base, char const* name) {
  pugi::xml_attribute const own = format.attribute(name);
  return own ? own : base.attribute(name);
}

pugi::xml_node pickChild(pugi::xml_node format, pugi::xml_node base, char const* name) {
  pugi::xml_node const own = format.child(name);
  return own ? own : base.child(name);
}

}  // namespace

void StylesReader::read(pugi::xml_node styleSheet, DOM::SharedObjectFactory const& factory,
                        std::size_t formatLimit) {
  readIndexedColours(styleSheet.child("colors").child("indexedColors"));
  _numberFormats.add(styleSheet.child("numFmts"));
  Tables const tables{
      listChildren(styleSheet.child("fonts")), listChildren(styleSheet.child("fills")),
      listChildren(styleSheet.child("borders")), listChildren(styleSheet.child("cellStyleXfs"))};
  auto const cellFormats = listChildren(styleSheet.child("cellXfs"));
  auto const differentialFormats = listChildren(styleSheet.child("dxfs"));
  _isBeyondLimit = cellFormats.size() > formatLimit || differentialFormats.size() > formatLimit;
  if (_isBeyondLimit) {
    return;
  }
  for (pugi::xml_node const format : cellFormats) {
    _cellStyles.push_back(factory.create(readCellFormat(format, tables)));
  }
  for (pugi::xml_node const dxf : differentialFormats) {
    std::string name = "differential format " + std::to_string(_differentialStyles.size());
    _differentialStyles.push_back(addDifferentialStyle(dxf, std::move(name)));
  }
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
DOM::CellStyle StylesReader::readCellFormat(pugi::xml_node format, Tables const& tables) {
  pugi::xml_node const base = pick(tables.baseFormats, format.attribute("xfId"));
  DOM::RunProps run;
  DOM::ParaProps para;
  DOM::CellProps cell;
  readFont(pick(tables.fonts, pickAttribute(format, base, "fontId")), _palette, run);
  readAlignment(pickChild(format, base, "alignment"), para, cell);
  readBorder(pick(tables.borders, pickAttribute(format, base, "borderId")), _palette, cell);
  readProtection(pickChild(format, base, "protection"), cell);
  readCellFill(pick(tables.fills, pickAttribute(format, base, "fillId")), _palette, cell);
  DOM::CellStyle style;
  style.setRunProps(shareIfSet(run));
  style.setParaProps(shareIfSet(para));
  style.setCellProps(shareIfSet(cell));
  auto const formatId = parseInteger(pickAttribute(format, base, "numFmtId").value());
  style.setCellFormat(formatId ? _numberFormats.find(*formatId) : nullptr);
  return style;
}

}  // namespace Zorv::Workbook
