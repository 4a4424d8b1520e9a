#pragma once

#include <memory>
#include <optional>

#include <pugixml.hpp>

#include "DOM/StyleProps.h"
#include "workbook/Read/Colours.h"

/// The elements of which cell formats and differential formats are made (ISO/IEC 29500-1, 18.8).
/// Each reader sets what the element says and leaves the rest; a missing element says nothing.
namespace Zorv::Workbook {

void readFont(pugi::xml_node font, Palette const& palette, DOM::RunProps& props);

void readAlignment(pugi::xml_node alignment, DOM::ParaProps& para, DOM::CellProps& cell);

void readBorder(pugi::xml_node border, Palette const& palette, DOM::CellProps& props);

void readProtection(pugi::xml_node protection, DOM::CellProps& props);

/// The fill of a cell format, where a solid fill's colour stands in the foreground.
void readCellFill(pugi::xml_node fill, Palette const& palette, DOM::CellProps& props);

/// The fill of a differential format, where a solid fill's colour stands in the background, and a
/// fill whose pattern is not named is solid.
void readDifferentialFill(pugi::xml_node fill, Palette const& palette, DOM::CellProps& props);

/// The group itself, or null where nothing in it is set.
template <class Props>
[[nodiscard]] std::shared_ptr<Props const> shareIfSet(Props const& props) {
  return props == Props() ? nullptr : std::make_shared<Props const>(props);
}

}  // namespace Zorv::Workbook
