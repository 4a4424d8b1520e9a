// Draws a workbook whose sheet is any text, the inner XML of its `worksheet` element: as a picture
// in memory, as a page, and on a terminal.
#include <algorithm>
#include <string_view>

#include "fuzz/Fuzzing.h"
#include "render/BuildPicture.h"
#include "render/Html/Page.h"
#include "render/Terminal/DrawOnTerminal.h"

namespace {

using namespace Zorv;
using Fuzzing::require;

/// Writers rely on what is checked here.
void checkSheet(Render::SheetPicture const& sheet) {
  Render::PictureCell const* previous = nullptr;
  for (Render::PictureCell const& cell : sheet.cells) {
    require(cell.rowCount > 0 && cell.columnCount > 0, "a cell covers a position");
    require(std::size_t{cell.row} + cell.rowCount <= sheet.rows.size() &&
                std::size_t{cell.column} + cell.columnCount <= sheet.columns.size(),
            "a cell lies in its sheet");
    require(cell.look < sheet.looks.size() && cell.edges < sheet.edges.size() &&
                cell.decision < sheet.decisions.size() && cell.link <= sheet.links.size() &&
                cell.runs <= sheet.richTexts.size(),
            "what a cell names is there");
    auto const free = Render::freeColumnsOf(sheet, cell);
    require(free.before <= cell.column &&
                std::size_t{cell.column} + cell.columnCount + free.after <= sheet.columns.size(),
            "a text runs over columns of its sheet");
    require(previous == nullptr || previous->row < cell.row ||
                (previous->row == cell.row && previous->column < cell.column),
            "cells come row by row");
    previous = &cell;
  }
}

void checkLine(std::string_view line) {
  require(std::ranges::none_of(line, [](char byte) { return 0 <= byte && byte < ' '; }),
          "a line has no control characters");
}

void draw(Workbook::Document const& document, Workbook::LoadOptions const& options) {
  Render::PictureOptions picture;
  picture.positionLimit = 50'000;
  picture.budget = options.budget;
  for (std::size_t sheet = 0; sheet < document.getSheets().size(); ++sheet) {
    picture.sheets.push_back({.sheet = sheet, .range = std::nullopt});
  }
  auto const built = Render::buildPicture(document, picture);
  for (Render::SheetPicture const& sheet : built.sheets) {
    checkSheet(sheet);
    Render::drawOnTerminal(sheet, {.width = 80, .budget = options.budget}, checkLine);
  }
  auto const accounts =
      Render::makePageAccounts(document, options.localeName, options.timeZone, options.budget);
  Render::writePage(built, {}, accounts.get(), [](std::string_view) {});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string_view const sheet(reinterpret_cast<char const*>(data), size);
  Fuzzing::loadAndUse(Fuzzing::makeWorkbook(sheet), draw);
  return 0;
}
