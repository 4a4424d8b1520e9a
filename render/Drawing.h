#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

#include "Utils/WorkBudget.h"
#include "render/Picture.h"

namespace Zorv::Render {

enum class DrawingFormat : std::uint8_t { Png, Svg, Pdf };

/// Takes the bytes of a file, piece after piece.
using ByteSink = std::function<void(std::string_view bytes)>;

struct DrawOptions {
  /// Pixels of a PNG for each CSS pixel, or the size of an SVG; 0.1 to 10. A PDF has that of its
  /// page setup.
  double scale = 1;
  std::uint64_t pixelLimit = 500'000'000;  ///< most pixels of a PNG
  std::uint64_t pageLimit = 10'000;        ///< most pages of a PDF
  /// Bounds the work and the memory; borrowed, null for no bound.
  WorkBudget* budget = nullptr;
  /// The file of the module that draws, for what is no program itself; empty: at its place beside
  /// the program. The first drawing of a process loads it.
  std::filesystem::path module = {};
};

/// Width of the white edge around a drawn sheet in CSS pixels: the lines around its outer cells lie
/// half on it. A PDF has none, but the margins of its pages.
inline constexpr double drawingMargin = 2;

/// Draws a picture and hands the bytes of the file to the sink.
///
/// A PNG or an SVG shows the first sheet, without headings. A PDF has the pages of all sheets, as
/// their page setups say, with selectable text and links to the web. The same picture gives the
/// same bytes wherever the same fonts and libraries are installed.
/// Throws BaseRuntimeError if the module that draws is not installed, for a scale out of bounds, if
/// the picture is too large, or if the drawing fails; what the budget throws; and what the sink
/// throws. The sink may have had bytes by then.
/// Threads: calls may run concurrently.
/// Cost: linear in the cells and, for a PNG, in the pixels. The memory of a PNG does not grow with
/// its height.
void draw(Picture const& picture, DrawingFormat format, DrawOptions const& options,
          ByteSink const& sink);

}  // namespace Zorv::Render
