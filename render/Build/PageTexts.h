#pragma once

#include <string>
#include <string_view>

#include "render/Picture.h"

namespace Zorv::Render {

/// Facts for headers and footers that are the same on all pages.
struct PageFacts {
  std::string sheetName;
  std::string date;
  std::string time;
};

/// The text of a header or a footer with its codes (ISO/IEC 29500-1, 18.3.1.39): `&L`, `&C` and
/// `&R` begin a section, `&P` and `&N` are numbers of pages, `&D`, `&T`, `&F` and `&A` date, time,
/// file and sheet, and `&&` is an ampersand. Codes of fonts, colours, pictures and folders are left
/// out: the text is drawn plainly.
[[nodiscard]] PageText parsePageText(std::string_view text, PageFacts const& facts);

}  // namespace Zorv::Render
