#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>

#include <pugixml.hpp>

#include "workbook/Read/Colours.h"
#include "workbook/TableStyle.h"

namespace Zorv::Workbook {

/// The styles that tables name: those of the styles part, and the built-in ones of the format.
class TableStyles {
public:
  /// Takes a copy of the palette, in whose counts these formats appear already.
  explicit TableStyles(Palette palette) : _palette(std::move(palette)) {}

  /// Reads the tree of the styles part (ISO/IEC 29500-1, 18.8.42 and 18.8.83).
  void read(pugi::xml_node styleSheet);

  /// The style of a name, ignoring letter case; null if nobody knows it. Each style is one object.
  [[nodiscard]] std::shared_ptr<TableStyle const> find(std::string const& name);

private:
  Palette _palette;
  std::unordered_map<std::string, std::shared_ptr<TableStyle const>> _known;  ///< by folded name
};

}  // namespace Zorv::Workbook
