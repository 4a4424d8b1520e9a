#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "render/Picture.h"

namespace Zorv::Render::Tests {

/// Makes the picture of one sheet by hand, its cells in any order.
class SheetBuilder {
public:
  SheetBuilder(std::uint32_t rows, std::uint32_t columns, double height = 20, double width = 64) {
    _sheet.name = "Sheet";
    addLines(_sheet.rows, rows, height);
    addLines(_sheet.columns, columns, width);
    _sheet.looks.emplace_back();
    _sheet.looks.front().font.name = "Calibri";
    _sheet.edges.emplace_back();
  }

  /// The cell at a position; made at the first call.
  PictureCell& cell(std::uint32_t row, std::uint32_t column) {
    auto const found = std::ranges::find_if(_sheet.cells, [&](PictureCell const& cell) {
      return cell.row == row && cell.column == column;
    });
    if (found != _sheet.cells.end()) {
      return *found;
    }
    PictureCell& made = _sheet.cells.emplace_back();
    made.row = row;
    made.column = column;
    return made;
  }

  PictureCell& text(std::uint32_t row, std::uint32_t column, std::string text) {
    PictureCell& made = cell(row, column);
    made.text = std::move(text);
    made.content = CellContent::Text;
    return made;
  }

  /// Gives a cell a look of its own, made from its present one by `change`.
  template <class Change>
  PictureCell& look(std::uint32_t row, std::uint32_t column, Change const& change) {
    PictureCell& changed = cell(row, column);
    Look look = _sheet.looks[changed.look];
    change(look);
    changed.look = static_cast<std::uint32_t>(_sheet.looks.size());
    _sheet.looks.push_back(std::move(look));
    return changed;
  }

  PictureCell& edges(std::uint32_t row, std::uint32_t column, CellEdges const& edges) {
    PictureCell& changed = cell(row, column);
    changed.edges = static_cast<std::uint32_t>(_sheet.edges.size());
    _sheet.edges.push_back(edges);
    return changed;
  }

  PictureCell& fill(std::uint32_t row, std::uint32_t column, DOM::Colour const& colour) {
    return look(row, column, [&](Look& look) {
      look.fill = {DOM::FillPattern::Solid, colour, {}, {}};
    });
  }

  void setHeight(std::uint32_t row, double height) { setSize(_sheet.rows, row, height); }
  void setWidth(std::uint32_t column, double width) { setSize(_sheet.columns, column, width); }

  [[nodiscard]] SheetPicture& sheet() noexcept { return _sheet; }

  /// The picture with this sheet alone.
  [[nodiscard]] Picture build() const {
    Picture picture;
    picture.name = "picture";
    picture.sheets.push_back(_sheet);
    std::ranges::sort(picture.sheets.front().cells, {},
                      [](PictureCell const& cell) { return std::pair(cell.row, cell.column); });
    return picture;
  }

private:
  static void addLines(std::vector<Line>& lines, std::uint32_t count, double size) {
    for (std::uint32_t i = 0; i < count; ++i) {
      lines.push_back({i, i * size, size});
    }
  }

  static void setSize(std::vector<Line>& lines, std::uint32_t index, double size) {
    lines[index].size = size;
    for (std::size_t i = index + 1; i < lines.size(); ++i) {
      lines[i].start = lines[i - 1].start + lines[i - 1].size;
    }
  }

  SheetPicture _sheet;
};

}  // namespace Zorv::Render::Tests
