#pragma once

#include <cstdint>
#include <string>

#include "render/Draw/Cairo.h"
#include "render/Draw/Typesetter.h"
#include "render/Picture.h"

namespace Zorv::Render::Draw {

/// Facts about one page for its headers and footers.
struct PageFacts {
  std::string const& fileName;
  std::uint64_t place = 0;  ///< among the pages of the sheet, from 0
  long number = 1;
  std::uint64_t count = 1;  ///< pages of the file
};

/// Paints the header and the footer of a page into its margins. The context has the corner of the
/// paper as its origin and a scale of one unit for each CSS pixel.
void paintPageLines(cairo_t* cairo, Typesetter& typesetter, SheetPicture const& sheet,
                    PageFacts const& facts);

}  // namespace Zorv::Render::Draw
