#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "render/draw/DrawnPng.h"
#include "render/draw/Gallery.h"
#include "render/draw/SheetBuilder.h"

// PNG, SVG and PDF of one picture, the latter two rasterised by programs that this project has no
// part in.
namespace Zorv::Render::Tests {
namespace {

/// A folder for files, removed at its end.
class ScratchFolder {
public:
  ScratchFolder() : _path(testing::TempDir() + "cndfrmt-drawings-XXXXXX") {
    if (mkdtemp(_path.data()) == nullptr) {
      throw std::runtime_error("no temporary folder");
    }
  }
  ScratchFolder(ScratchFolder const&) = delete;
  ScratchFolder& operator=(ScratchFolder const&) = delete;
  ~ScratchFolder() { std::filesystem::remove_all(_path); }

  [[nodiscard]] std::string write(std::string const& name, std::string const& bytes) const {
    std::ofstream(_path + "/" + name, std::ios::binary) << bytes;
    return _path + "/" + name;
  }
  [[nodiscard]] std::string read(std::string const& name) const {
    std::ifstream file(_path + "/" + name, std::ios::binary);
    return std::move(std::ostringstream() << file.rdbuf()).str();
  }

private:
  std::string _path;
};

std::string rasteriseSvg(std::string const& svg) {
  ScratchFolder const folder;
  std::string const file = folder.write("in.svg", svg);
  EXPECT_EQ(std::system(("rsvg-convert '" + file + "' -o '" + file + ".png'").c_str()), 0);
  return folder.read("in.svg.png");
}

std::string rasterisePdf(std::string const& pdf) {
  ScratchFolder const folder;
  std::string const file = folder.write("in.pdf", pdf);
  EXPECT_EQ(std::system(("pdftoppm -r 96 -png -singlefile '" + file + "' '" + file + "'").c_str()),
            0);
  return folder.read("in.pdf.png");
}

std::string readPdfText(std::string const& pdf, int page) {
  ScratchFolder const folder;
  std::string const file = folder.write("in.pdf", pdf);
  std::string const number = std::to_string(page);
  EXPECT_EQ(std::system(("pdftotext -f " + number + " -l " + number + " '" + file + "'").c_str()),
            0);
  return folder.read("in.txt");
}

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

/// Mean of a colour's parts over a block of pixels.
double meanOf(Pixels const& pixels, int left, int top, int side) {
  double sum = 0;
  for (int y = top; y < top + side; ++y) {
    for (int x = left; x < left + side; ++x) {
      DOM::Colour const colour = pixels.at(x, y);
      sum += colour.red + colour.green + colour.blue;
    }
  }
  return sum / (3.0 * side * side);
}

/// The share of blocks of 8 x 8 pixels whose mean colours are further apart than characters that
/// are rasterised differently make them.
double compare(Pixels const& a, Pixels const& b) {
  constexpr int side = 8;
  constexpr double tolerance = 12;
  int differing = 0;
  int all = 0;
  for (int y = 0; y + side <= std::min(a.height(), b.height()); y += side) {
    for (int x = 0; x + side <= std::min(a.width(), b.width()); x += side, ++all) {
      differing += std::abs(meanOf(a, x, y, side) - meanOf(b, x, y, side)) > tolerance ? 1 : 0;
    }
  }
  return static_cast<double>(differing) / all;
}

constexpr double mostDiffering = 0.02;

TEST(Agreement, PngAndSvgShowTheSame) {
  Picture const picture = makeOnePage();
  Pixels const png(drawFile(picture, DrawingFormat::Png));
  Pixels const svg(rasteriseSvg(drawFile(picture, DrawingFormat::Svg)));
  ASSERT_TRUE(png.isValid() && svg.isValid());
  EXPECT_EQ(png.width(), svg.width());
  EXPECT_EQ(png.height(), svg.height());
  EXPECT_LT(compare(png, svg), mostDiffering);
}

TEST(Agreement, PngAndPdfShowTheSame) {
  Picture const picture = makeOnePage();
  Pixels const png(drawFile(picture, DrawingFormat::Png));
  Pixels const pdf(rasterisePdf(drawFile(picture, DrawingFormat::Pdf)));
  ASSERT_TRUE(png.isValid() && pdf.isValid());
  EXPECT_NEAR(png.width(), pdf.width(), 1);
  EXPECT_NEAR(png.height(), pdf.height(), 1);
  EXPECT_LT(compare(png, pdf), mostDiffering);
}

TEST(Agreement, ADifferenceIsSeen) {
  Picture const picture = makeOnePage();
  Picture other = makeOnePage();
  for (PictureCell& cell : other.sheets[0].cells) {
    cell.icon.reset();
  }
  Pixels const png(drawFile(picture, DrawingFormat::Png));
  EXPECT_GT(compare(png, Pixels(drawFile(other, DrawingFormat::Png))), mostDiffering);
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

}  // namespace
}  // namespace Zorv::Render::Tests
