#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "render/Picture.h"

namespace Zorv::TestSupport {

/// A picture of one sheet, made by hand: columns of 64 pixels and rows of 20.
struct MadePicture {
  explicit MadePicture(std::uint32_t rowCount, std::uint32_t columnCount) {
    picture.name = "book.xlsx";
    auto& sheet = picture.sheets.emplace_back();
    sheet.name = "Sheet1";
    sheet.range = {0, 0, rowCount, columnCount};
    for (std::uint32_t row = 0; row < rowCount; ++row) {
      sheet.rows.push_back({.index = row, .start = row * 20.0, .size = 20});
    }
    for (std::uint32_t column = 0; column < columnCount; ++column) {
      sheet.columns.push_back({.index = column, .start = column * 64.0, .size = 64});
    }
    sheet.width = columnCount * 64.0;
    sheet.height = rowCount * 20.0;
    sheet.looks.emplace_back();
    sheet.edges.emplace_back();
    sheet.decisions.emplace_back();
  }

  [[nodiscard]] Render::SheetPicture& sheet() { return picture.sheets[0]; }

  /// Adds a cell with a text. Cells must come row by row. The reference is valid until the next
  /// call.
  Render::PictureCell& add(std::uint32_t row, std::uint32_t column, std::string text = {}) {
    auto& cell = sheet().cells.emplace_back();
    cell.row = row;
    cell.column = column;
    cell.content = text.empty() ? Render::CellContent::Empty : Render::CellContent::Text;
    cell.text = std::move(text);
    return cell;
  }

  /// Adds a rule on a range, and gives the index of the decision in which it alone has a part.
  std::uint32_t addRule(TableRange const& range, std::string text) {
    auto& rule = sheet().rules.emplace_back();
    rule.number = sheet().rules.size();
    rule.text = std::move(text);
    rule.ranges = "somewhere";
    rule.areas = {range};
    sheet().decisions.push_back({static_cast<std::uint32_t>(sheet().rules.size() - 1)});
    return static_cast<std::uint32_t>(sheet().decisions.size() - 1);
  }

  Render::Picture picture;
};

}  // namespace Zorv::TestSupport
