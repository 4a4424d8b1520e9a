#pragma once

#include <memory>
#include <optional>

#include <pugixml.hpp>

#include "DOM/StyleProps.h"
#include "workbook/Read/Colours.h"

/// Elements of cell formats and differential formats (ISO/IEC 29500-1, 18.8). Each reader sets the
/// properties that the element has, and leaves the others; a missing element sets nothing.
namespace Zorv::Workbook {

void readFont(pugi::xml_node font, Palette& palette, DOM::RunProps& props);

void readAlignment(pugi::xml_node alignment, DOM::ParaProps& para, DOM::CellProps& cell);

void readBorder(pugi::xml_node border, Palette& palette, DOM::CellProps& props);

/// Line of a border element that lies inside of what the border goes round: `vertical` or
/// `horizontal`; nothing if the element has none.
[[nodiscard]] std::optional<DOM::BorderLine> readInnerLine(pugi::xml_node border, char const* name,
                                                           Palette& palette);

void readProtection(pugi::xml_node protection, DOM::CellProps& props);

/// Fill of a cell format, which has the colour of a solid fill in the foreground.
void readCellFill(pugi::xml_node fill, Palette& palette, DOM::CellProps& props);

/// Fill of a differential format, which has the colour of a solid fill in the background. A fill
/// without a pattern is solid.
void readDifferentialFill(pugi::xml_node fill, Palette& palette, DOM::CellProps& props);

/// The group, or null if nothing in it is set.
template <class Props>
[[nodiscard]] std::shared_ptr<Props const> shareIfSet(Props const& props) {
  return props == Props() ? nullptr : std::make_shared<Props const>(props);
}

}  // namespace Zorv::Workbook
