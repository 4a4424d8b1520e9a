#include "workbook/Read/TableStyles.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "Utils/CaseFolding.h"
#include "workbook/Read/FormatElements.h"
#include "workbook/Read/PresetTableStyles.h"
#include "workbook/Read/Values.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Workbook {

namespace {

/// In the order of TablePart.
constexpr std::array partNames{"wholeTable",      "firstColumnStripe", "secondColumnStripe",
                               "firstRowStripe",  "secondRowStripe",   "lastColumn",
                               "firstColumn",     "headerRow",         "totalRow",
                               "firstHeaderCell", "lastHeaderCell",    "firstTotalCell",
                               "lastTotalCell"};

/// Nothing for the parts of pivot tables.
std::optional<TablePart> findPart(std::string_view name) {
  auto const* const found = std::ranges::find(partNames, name);
  return found != partNames.end() ? std::optional(static_cast<TablePart>(found - partNames.begin()))
                                  : std::nullopt;
}

/// The differential formats as formats of parts, each read once.
class PartFormats {
public:
  PartFormats(pugi::xml_node formats, Palette& palette) : _palette(palette) {
    for (pugi::xml_node const format : formats.children("dxf")) {
      _entries.emplace_back(format, nullptr);
    }
  }

  /// Null for an index that the workbook does not have.
  std::shared_ptr<TablePartFormat const> find(std::optional<long> index) {
    if (!index || *index < 0 || static_cast<std::size_t>(*index) >= _entries.size()) {
      return nullptr;
    }
    auto& [element, format] = _entries[static_cast<std::size_t>(*index)];
    if (format == nullptr) {
      format = read(element);
    }
    return format;
  }

private:
  std::shared_ptr<TablePartFormat const> read(pugi::xml_node element) {
    TablePartFormat format;
    readFont(element.child("font"), _palette, format.run);
    readDifferentialFill(element.child("fill"), _palette, format.cell);
    pugi::xml_node const border = element.child("border");
    readBorder(border, _palette, format.cell);
    format.vertical = readInnerLine(border, "vertical", _palette);
    format.horizontal = readInnerLine(border, "horizontal", _palette);
    return std::make_shared<TablePartFormat const>(std::move(format));
  }

  Palette& _palette;
  std::vector<std::pair<pugi::xml_node, std::shared_ptr<TablePartFormat const>>> _entries;
};

/// A stripe has up to nine lines.
unsigned long readStripeSize(pugi::xml_node element) {
  constexpr long most = 9;
  auto const size = parseInteger(element.attribute("size").value());
  return size && 1 <= *size && *size <= most ? static_cast<unsigned long>(*size) : 1;
}

void setStripeSize(TableStyle& style, TablePart part, unsigned long size) {
  switch (part) {
    case TablePart::FirstRowStripe:
      style.rowStripes[0] = size;
      break;
    case TablePart::SecondRowStripe:
      style.rowStripes[1] = size;
      break;
    case TablePart::FirstColumnStripe:
      style.columnStripes[0] = size;
      break;
    case TablePart::SecondColumnStripe:
      style.columnStripes[1] = size;
      break;
    default:
      break;
  }
}

/// Of a part that a style has more than once, the last format counts.
std::shared_ptr<TableStyle const> readStyle(pugi::xml_node element, PartFormats& formats) {
  auto style = std::make_shared<TableStyle>();
  std::array<std::shared_ptr<TablePartFormat const>, partNames.size()> byPart;
  for (pugi::xml_node const child : element.children("tableStyleElement")) {
    if (auto const part = findPart(child.attribute("type").value())) {
      setStripeSize(*style, *part, readStripeSize(child));
      byPart.at(static_cast<std::size_t>(*part)) =
          formats.find(parseInteger(child.attribute("dxfId").value()));
    }
  }
  for (std::size_t part = 0; part < byPart.size(); ++part) {
    if (byPart.at(part) != nullptr) {
      style->elements.push_back({static_cast<TablePart>(part), std::move(byPart.at(part))});
    }
  }
  return style;
}

}  // namespace

void TableStyles::read(pugi::xml_node styleSheet) {
  PartFormats formats(styleSheet.child("dxfs"), _palette);
  for (pugi::xml_node const element : styleSheet.child("tableStyles").children("tableStyle")) {
    _known.try_emplace(foldCase(unescapeXstring(element.attribute("name").value())),
                       readStyle(element, formats));
  }
}

std::shared_ptr<TableStyle const> TableStyles::find(std::string const& name) {
  auto const [place, isNew] = _known.try_emplace(foldCase(name));
  if (isNew) {
    if (auto preset = makePresetTableStyle(place->first, _palette)) {
      place->second = std::make_shared<TableStyle const>(*std::move(preset));
    }
  }
  return place->second;
}

}  // namespace Zorv::Workbook
