#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "render/draw/DrawnPng.h"
#include "render/draw/Gallery.h"
#include "render/draw/Rasterised.h"
#include "render/draw/SheetBuilder.h"

// PNG, SVG and PDF of one picture, the latter two rasterised by programs that this project has no
// part in.
namespace Zorv::Render::Tests {
namespace {

/// The gallery on one page that is as large as the picture.
Picture makeOnePage() {
  Picture picture = makeGallery();
  PageSetup& page = picture.sheets[0].page;
  page.width = 12 * 64 + 2 * drawingMargin;
  page.height = 672;
  page.left = page.right = page.top = page.bottom = drawingMargin;
  page.printsGridLines = true;
  return picture;
}

constexpr double agreementTolerance = 12;
constexpr double mostDiffering = 0.02;

TEST(Agreement, PngAndSvgShowTheSame) {
  Picture const picture = makeOnePage();
  Pixels const png(drawFile(picture, DrawingFormat::Png));
  Pixels const svg(rasteriseSvg(drawFile(picture, DrawingFormat::Svg)));
  ASSERT_TRUE(png.isValid() && svg.isValid());
  EXPECT_EQ(png.width(), svg.width());
  EXPECT_EQ(png.height(), svg.height());
  EXPECT_LT(compare(png, svg, agreementTolerance), mostDiffering);
}

TEST(Agreement, PngAndPdfShowTheSame) {
  Picture const picture = makeOnePage();
  Pixels const png(drawFile(picture, DrawingFormat::Png));
  Pixels const pdf(rasterisePdf(drawFile(picture, DrawingFormat::Pdf)));
  ASSERT_TRUE(png.isValid() && pdf.isValid());
  EXPECT_NEAR(png.width(), pdf.width(), 1);
  EXPECT_NEAR(png.height(), pdf.height(), 1);
  EXPECT_LT(compare(png, pdf, agreementTolerance), mostDiffering);
}

TEST(Agreement, ADifferenceIsSeen) {
  Picture const picture = makeOnePage();
  Picture other = makeOnePage();
  for (PictureCell& cell : other.sheets[0].cells) {
    cell.icon.reset();
  }
  Pixels const png(drawFile(picture, DrawingFormat::Png));
  EXPECT_GT(compare(png, Pixels(drawFile(other, DrawingFormat::Png)), agreementTolerance),
            mostDiffering);
}

TEST(Agreement, APdfRepeatsTitlesAndItsTextCanBeRead) {
  SheetBuilder builder(100, 2);
  builder.text(0, 0, "Heading").freeRight = 1;
  for (std::uint32_t row = 1; row < 100; ++row) {
    builder.text(row, 0, "row" + std::to_string(row));
  }
  builder.sheet().page.titleRowsEnd = 1;
  std::string const pdf = drawFile(builder.build(), DrawingFormat::Pdf);
  EXPECT_THAT(readPdfText(pdf, 1), testing::HasSubstr("Heading"));
  EXPECT_THAT(readPdfText(pdf, 1), testing::HasSubstr("row1\n"));
  EXPECT_THAT(readPdfText(pdf, 2), testing::HasSubstr("Heading"));
  EXPECT_THAT(readPdfText(pdf, 3), testing::HasSubstr("row99"));
}

using Piece = PageTextPiece;

TEST(Agreement, APdfHasHeadersFootersAndHeadings) {
  SheetBuilder builder(100, 2);
  builder.text(0, 0, "first");
  PageSetup& page = builder.sheet().page;
  page.printsHeadings = true;
  page.texts.header.left = {{.text = "Sheet of "}, {.kind = Piece::Kind::FileName}};
  page.texts.footer.right = {{.kind = Piece::Kind::PageNumber, .offset = 10},
                             {.text = " of "},
                             {.kind = Piece::Kind::PageCount}};
  page.textsOfFirstPage.emplace().header.centre = {{.text = "Title"}};
  Picture picture = builder.build();
  picture.sheets.push_back(picture.sheets.front());
  picture.sheets.back().page.firstPageNumber = 40;
  std::string const pdf = drawFile(picture, DrawingFormat::Pdf);
  EXPECT_THAT(readPdfText(pdf, 1), testing::HasSubstr("Title"));
  EXPECT_THAT(readPdfText(pdf, 1), testing::Not(testing::HasSubstr("of")));
  EXPECT_THAT(readPdfText(pdf, 1), testing::HasSubstr("A\n"));
  EXPECT_THAT(readPdfText(pdf, 2), testing::HasSubstr("Sheet of picture"));
  EXPECT_THAT(readPdfText(pdf, 2), testing::HasSubstr("12 of 6"));
  EXPECT_THAT(readPdfText(pdf, 2), testing::HasSubstr("60"));
  EXPECT_THAT(readPdfText(pdf, 5), testing::HasSubstr("51 of 6"));
}

}  // namespace
}  // namespace Zorv::Render::Tests
