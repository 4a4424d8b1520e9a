#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "render/Picture.h"
#include "render/Terminal/DrawOnTerminal.h"

namespace Zorv::Render::TestSupport {

/// A picture of a sheet, made by hand: columns of 64 pixels and rows of 20, without gridlines.
class TerminalPicture {
public:
  TerminalPicture(std::size_t rows, std::size_t columns) {
    for (unsigned long row = 0; row < rows; ++row) {
      sheet.rows.push_back({.index = row, .size = 20});
    }
    for (unsigned long column = 0; column < columns; ++column) {
      sheet.columns.push_back({.index = column, .size = 64});
    }
    sheet.looks.emplace_back();
    sheet.edges.emplace_back();
  }

  /// Cells must be added row by row.
  PictureCell& add(std::uint32_t row, std::uint32_t column, std::string text,
                   CellContent content = CellContent::Text) {
    auto& cell = sheet.cells.emplace_back();
    cell.row = row;
    cell.column = column;
    cell.text = std::move(text);
    cell.content = content;
    cell.horizontal = content == CellContent::Text ? DOM::HorizontalAlignment::Left
                                                   : DOM::HorizontalAlignment::Right;
    return cell;
  }

  /// Gives a cell a look of its own.
  Look& lookOf(PictureCell& cell) {
    cell.look = static_cast<std::uint32_t>(sheet.looks.size());
    return sheet.looks.emplace_back();
  }

  /// Gives a cell lines of its own.
  CellEdges& edgesOf(PictureCell& cell) {
    cell.edges = static_cast<std::uint32_t>(sheet.edges.size());
    return sheet.edges.emplace_back();
  }

  /// A line all around a cell.
  void box(PictureCell& cell, DOM::LineStyle style) {
    auto& edges = edgesOf(cell);
    edges.left = edges.right = edges.top = edges.bottom = {.style = style};
  }

  /// The lines as they are drawn, each with its end.
  [[nodiscard]] std::string draw(TerminalOptions const& options = {}) const {
    std::string text;
    drawOnTerminal(sheet, options, [&](std::string_view line) { text.append(line) += '\n'; });
    return text;
  }

  SheetPicture sheet;
};

}  // namespace Zorv::Render::TestSupport
