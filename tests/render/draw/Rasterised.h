#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "render/draw/DrawnPng.h"

// Drawings rasterised by programs that this project has no part in, and how far pictures differ.
namespace Zorv::Render::Tests {

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

[[nodiscard]] inline std::string rasteriseSvg(std::string const& svg) {
  ScratchFolder const folder;
  std::string const file = folder.write("in.svg", svg);
  EXPECT_EQ(std::system(("rsvg-convert '" + file + "' -o '" + file + ".png'").c_str()), 0);
  return folder.read("in.svg.png");
}

[[nodiscard]] inline std::string rasterisePdf(std::string const& pdf) {
  ScratchFolder const folder;
  std::string const file = folder.write("in.pdf", pdf);
  EXPECT_EQ(std::system(("pdftoppm -r 96 -png -singlefile '" + file + "' '" + file + "'").c_str()),
            0);
  return folder.read("in.pdf.png");
}

[[nodiscard]] inline std::string readPdfText(std::string const& pdf, int page) {
  ScratchFolder const folder;
  std::string const file = folder.write("in.pdf", pdf);
  std::string const number = std::to_string(page);
  EXPECT_EQ(std::system(("pdftotext -f " + number + " -l " + number + " '" + file + "'").c_str()),
            0);
  return folder.read("in.txt");
}

/// Mean red, green and blue of a block of pixels.
[[nodiscard]] inline std::array<double, 3> meanOf(Pixels const& pixels, int left, int top,
                                                  int side) {
  std::array<double, 3> sums{};
  for (int y = top; y < top + side; ++y) {
    for (int x = left; x < left + side; ++x) {
      DOM::Colour const colour = pixels.at(x, y);
      sums[0] += colour.red;
      sums[1] += colour.green;
      sums[2] += colour.blue;
    }
  }
  for (double& sum : sums) {
    sum /= side * side;
  }
  return sums;
}

/// The share of blocks of 8 x 8 pixels in which a mean of a colour's parts differs by more than a
/// tolerance, for characters that are rasterised differently.
[[nodiscard]] inline double compare(Pixels const& a, Pixels const& b, double tolerance) {
  constexpr int side = 8;
  int differing = 0;
  int all = 0;
  for (int y = 0; y + side <= std::min(a.height(), b.height()); y += side) {
    for (int x = 0; x + side <= std::min(a.width(), b.width()); x += side, ++all) {
      auto const first = meanOf(a, x, y, side);
      auto const second = meanOf(b, x, y, side);
      bool differs = false;
      for (std::size_t part = 0; part < first.size(); ++part) {
        differs = differs || std::abs(first.at(part) - second.at(part)) > tolerance;
      }
      differing += differs ? 1 : 0;
    }
  }
  return all == 0 ? 1 : static_cast<double>(differing) / all;
}

}  // namespace Zorv::Render::Tests
