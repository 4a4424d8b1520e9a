#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "render/BuildPicture.h"
#include "workbook/LoadWorkbook.h"

namespace Zorv::Render {
namespace {

Picture buildAll(Workbook::Document const& document) {
  PictureOptions options;
  for (std::size_t sheet = 0; sheet < document.getSheets().size(); ++sheet) {
    options.sheets.push_back({.sheet = sheet, .range = {}});
  }
  return buildPicture(document, options);
}

void expectSound(SheetPicture const& sheet) {
  for (PictureCell const& cell : sheet.cells) {
    ASSERT_LE(cell.row + cell.rowCount, sheet.rows.size());
    ASSERT_LE(cell.column + cell.columnCount + cell.freeRight, sheet.columns.size());
    ASSERT_LE(cell.freeLeft, cell.column);
    ASSERT_LT(cell.look, sheet.looks.size());
    ASSERT_LT(cell.edges, sheet.edges.size());
    ASSERT_LT(cell.decision, sheet.decisions.size());
    ASSERT_LE(cell.link, sheet.links.size());
    ASSERT_LE(cell.runs, sheet.richTexts.size());
    ASSERT_LE(cell.splitAt.value_or(0), cell.text.size());
    ASSERT_NE(cell.horizontal, DOM::HorizontalAlignment::General);
  }
  for (auto const& list : sheet.decisions) {
    for (auto const rule : list) {
      ASSERT_LT(rule, sheet.rules.size());
    }
  }
}

TEST(RealPictures, AreSoundForEveryWorkbook) {
  std::size_t cells = 0;
  for (auto const& entry : std::filesystem::directory_iterator(WORKBOOKS_FOLDER)) {
    if (entry.path().extension() != ".xlsx") {
      continue;
    }
    SCOPED_TRACE(entry.path().filename().string());
    auto const document = Workbook::loadWorkbook(entry.path());
    Picture const picture = buildAll(document);
    ASSERT_EQ(picture.sheets.size(), document.getSheets().size());
    for (SheetPicture const& sheet : picture.sheets) {
      expectSound(sheet);
      cells += sheet.cells.size();
    }
  }
  EXPECT_GT(cells, 1'000U);
}

}  // namespace
}  // namespace Zorv::Render
