#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>

#include "DOM/A1Notation.h"
#include "OfficeUtils/Clock.h"
#include "render/BuildPicture.h"
#include "render/draw/DrawnPng.h"
#include "render/draw/Gallery.h"
#include "render/draw/Rasterised.h"
#include "workbook/LoadWorkbook.h"

// Pictures of real sheets, held against those that someone has looked at. With
// CNDFRMT_REWRITE_GOLDEN=1 in the environment they are written anew instead.
namespace Zorv::Render::Tests {
namespace {

/// Above what other versions of the libraries that draw characters make of a block of pixels; a
/// black line through it makes 32.
constexpr double goldenTolerance = 24;
constexpr double mostChanged = 0.001;

struct GoldenCase {
  char const* name;
  char const* workbook;
  char const* sheet;
  char const* range;  ///< empty: all that is seen
  double scale;
};

void PrintTo(GoldenCase const& golden, std::ostream* stream) { *stream << golden.name; }

std::string goldenFile(std::string const& name) { return GOLDEN_FOLDER "/" + name + ".png"; }

std::string readAll(std::string const& path) {
  std::ifstream file(path, std::ios::binary);
  return std::move(std::ostringstream() << file.rdbuf()).str();
}

void expectGolden(std::string const& name, std::string const& drawn) {
  if (std::getenv("CNDFRMT_REWRITE_GOLDEN") != nullptr) {
    std::ofstream(goldenFile(name), std::ios::binary) << drawn;
    return;
  }
  Pixels const actual(drawn);
  Pixels const golden(readAll(goldenFile(name)));
  ASSERT_TRUE(actual.isValid() && golden.isValid());
  EXPECT_EQ(actual.width(), golden.width());
  EXPECT_EQ(actual.height(), golden.height());
  if (double const changed = compare(actual, golden, goldenTolerance); changed > mostChanged) {
    std::string const kept = testing::TempDir() + name + ".actual.png";
    std::ofstream(kept, std::ios::binary) << drawn;
    ADD_FAILURE() << name << ": " << changed * 100 << " % of the blocks differ; see " << kept;
  }
}

class GoldenPictures : public testing::TestWithParam<GoldenCase> {
protected:
  GoldenPictures()
      : _clock(std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) + std::chrono::hours(12)),
        _document(Workbook::loadWorkbook(std::string(SOURCE_FOLDER "/") + GetParam().workbook)) {
    SheetSelection selection{.sheet = _document.findSheet(GetParam().sheet).value(), .range = {}};
    if (*GetParam().range != '\0') {
      selection.range = DOM::A1Notation::parseRange(GetParam().range).value();
    }
    PictureOptions options;
    options.sheets.push_back(selection);
    _picture = buildPicture(_document, options);
  }

  /// One page with nothing but the picture.
  [[nodiscard]] Picture onOnePage() const {
    Picture picture = _picture;
    SheetPicture& sheet = picture.sheets.front();
    PageSetup page;
    page.width = sheet.width + 2 * drawingMargin;
    page.height = sheet.height + 2 * drawingMargin;
    page.left = page.right = page.top = page.bottom = drawingMargin;
    page.printsGridLines = sheet.showsGridLines;
    sheet.page = page;
    return picture;
  }

  Picture _picture;

private:
  OfficeUtils::ScopedClock const _clock;
  Workbook::Document const _document;
};

TEST_P(GoldenPictures, LookAsTheyDid) {
  expectGolden(GetParam().name,
               drawFile(_picture, DrawingFormat::Png, {.scale = GetParam().scale}));
}

TEST_P(GoldenPictures, AreTheSameOnPaper) {
  constexpr double paperTolerance = 16;
  constexpr double mostUnlike = 0.02;
  Picture const page = onOnePage();
  Pixels const png(drawFile(page, DrawingFormat::Png));
  Pixels const pdf(rasterisePdf(drawFile(page, DrawingFormat::Pdf)));
  ASSERT_TRUE(png.isValid() && pdf.isValid());
  EXPECT_NEAR(png.width(), pdf.width(), 1);
  EXPECT_LT(compare(png, pdf, paperTolerance), mostUnlike);
}

constexpr char const* demo = "examples/demo.xlsx";
constexpr char const* samples = "tests/workbooks/ConditionalFormattingSamples.xlsx";
INSTANTIATE_TEST_SUITE_P(
    Sheets, GoldenPictures,
    testing::Values(GoldenCase{"invoices", demo, "Invoices", "", 0.5},
                    GoldenCase{"sales", demo, "Sales", "", 0.5},
                    GoldenCase{"stock", demo, "Stock", "", 0.5},
                    GoldenCase{"budget", demo, "Budget", "", 0.5},
                    GoldenCase{"guests", demo, "Guests", "", 0.5},
                    GoldenCase{"months", samples, "FY months", "", 0.75},
                    GoldenCase{"styles", "tests/workbooks/Styles.xlsx", "Sheet1", "A1:L8", 0.65},
                    GoldenCase{"tables", "tests/workbooks/Styles.xlsx", "Sheet1", "A28:G37", 0.75},
                    GoldenCase{"risks", "tests/workbooks/Risk_Register.xlsx", "Sheet1", "", 0.4}),
    [](auto const& tested) { return std::string(tested.param.name); });

TEST(GoldenPaper, HasHeadersFootersAndHeadings) {
  OfficeUtils::ScopedClock const clock(std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) +
                                       std::chrono::hours(12));
  Workbook::Document document = Workbook::loadWorkbook(std::string(SOURCE_FOLDER "/") + demo);
  std::size_t const sheet = document.findSheet("Guests").value();
  Workbook::PageLayout& page = document.getSheets()[sheet].page;
  page.paperSize = 11;  // A5
  page.isLandscape = true;
  page.isCentredAcross = true;
  page.printsHeadings = true;
  page.printsGridLines = true;
  page.texts = {"&L&F&C&\"Arial,Bold\"&14&A&R&D", "&CPage &P of &N"};
  PictureOptions options;
  options.sheets.push_back({.sheet = sheet, .range = {}});
  Picture picture = buildPicture(document, options);
  picture.name = "demo.xlsx";
  expectGolden("paper", rasterisePdf(drawFile(picture, DrawingFormat::Pdf)));
}

TEST(GoldenGallery, LooksAsItDid) {
  expectGolden("gallery", drawFile(makeGallery(), DrawingFormat::Png));
}

/// A golden picture is worth as much as the smallest loss that it shows.
TEST(GoldenGallery, ALostBorderClipOrColourIsSeen) {
  Pixels const golden(drawFile(makeGallery(), DrawingFormat::Png));
  auto const expectSeen = [&](char const* what, auto const& change) {
    Picture picture = makeGallery();
    for (PictureCell& cell : picture.sheets.front().cells) {
      change(cell);
    }
    Pixels const changed(drawFile(picture, DrawingFormat::Png));
    EXPECT_GT(compare(changed, golden, goldenTolerance), mostChanged) << what;
  };
  expectSeen("border", [](PictureCell& cell) {
    cell.edges = cell.row == 11 && cell.column == 2 ? 0 : cell.edges;
  });
  expectSeen("clip", [](PictureCell& cell) {
    cell.freeRight = cell.text == "is cut at the next cell" ? 2 : cell.freeRight;
  });
  expectSeen("colour", [](PictureCell& cell) {
    cell.scaleColour = cell.scaleColour ? DOM::Colour{0xBE, 0x63, 0x7B} : cell.scaleColour;
  });
  expectSeen("icons",
             [](PictureCell& cell) { cell.icon = cell.row < 22 ? std::nullopt : cell.icon; });
}

}  // namespace
}  // namespace Zorv::Render::Tests
