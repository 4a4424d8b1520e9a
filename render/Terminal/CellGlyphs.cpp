#include "render/Terminal/CellGlyphs.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace Zorv::Render {

namespace {

std::vector<std::string_view> listParts(SheetPicture const& sheet, PictureCell const& cell) {
  if (cell.runs == 0) {
    return {cell.text};
  }
  std::vector<std::string_view> parts;
  for (TextRun const& run : sheet.richTexts[cell.runs - 1]) {
    parts.push_back(run.text);
  }
  return parts;
}

/// One glyph a line.
std::vector<GlyphLine> layOutUpright(std::vector<std::string_view> const& parts,
                                     std::size_t lines) {
  auto flat = breakIntoLines(parts, {.width = lines, .lines = 1});
  std::vector<GlyphLine> upright;
  for (Glyph& glyph : flat.front()) {
    upright.push_back({std::move(glyph)});
  }
  return upright;
}

}  // namespace

bool isUpright(Look const& look) noexcept {
  constexpr int steepest = 45;
  return look.isStacked || std::abs(look.rotation) > steepest;
}

bool wraps(Look const& look, PictureCell const& cell) noexcept {
  return cell.content == CellContent::Text &&
         (look.wraps || cell.horizontal == DOM::HorizontalAlignment::Justify ||
          cell.horizontal == DOM::HorizontalAlignment::Distributed);
}

std::vector<GlyphLine> layOutCell(SheetPicture const& sheet, PictureCell const& cell,
                                  std::size_t width, std::size_t lines) {
  auto const& look = sheet.looks[cell.look];
  auto const parts = listParts(sheet, cell);
  if (isUpright(look)) {
    return layOutUpright(parts, lines);
  }
  return breakIntoLines(parts, {.width = width, .lines = lines, .wraps = wraps(look, cell)});
}

}  // namespace Zorv::Render
