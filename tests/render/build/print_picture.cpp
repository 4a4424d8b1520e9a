// Prints the pictures of a workbook's sheets for comparison with those of other programs: one line
// each for a sheet, a column, a row and a cell, with fields between tabs.

#include <cstdio>
#include <exception>
#include <string>

#include <fmt/format.h>

#include "render/BuildPicture.h"
#include "workbook/LoadWorkbook.h"

namespace {

using namespace Zorv;

std::string toHex(DOM::Colour const& colour) {
  return fmt::format("#{:02X}{:02X}{:02X}", colour.red, colour.green, colour.blue);
}

/// The colour behind a cell's text; empty for none, and for patterns.
std::string describeFill(Render::Look const& look) {
  return look.fill.pattern == DOM::FillPattern::Solid ? toHex(look.fill.colour) : "";
}

std::string escapeLines(std::string text) {
  for (char& c : text) {
    c = c == '\n' || c == '\t' ? ' ' : c;
  }
  return text;
}

void print(Render::SheetPicture const& sheet) {
  fmt::print("sheet\t{}\n", sheet.name);
  for (auto const& column : sheet.columns) {
    fmt::print("column\t{}\t{}\n", column.index, column.size);
  }
  for (auto const& row : sheet.rows) {
    fmt::print("row\t{}\t{}\n", row.index, row.size);
  }
  for (auto const& cell : sheet.cells) {
    auto const& look = sheet.looks[cell.look];
    fmt::print("cell\t{}\t{}\t{}\t{}\t{}\t{}\t{}\t{}\n", sheet.rows[cell.row].index,
               sheet.columns[cell.column].index, escapeLines(cell.text),
               static_cast<int>(cell.horizontal), describeFill(look),
               toHex(cell.textColour.value_or(look.font.colour)), look.font.bold ? 1 : 0,
               cell.scaleColour ? 1 : 0);
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Workbook::LoadOptions loading;
    loading.semantics = Workbook::Semantics::Widespread;
    auto const document = Workbook::loadWorkbook(argc > 1 ? argv[1] : "", loading);
    Render::PictureOptions options;
    for (std::size_t sheet = 0; sheet < document.getSheets().size(); ++sheet) {
      options.sheets.push_back({.sheet = sheet, .range = {}});
    }
    for (auto const& sheet : Render::buildPicture(document, options).sheets) {
      print(sheet);
    }
    return 0;
  } catch (std::exception const& exception) {
    fmt::print(stderr, "{}\n", exception.what());
    return 1;
  }
}
