#include "render/Fonts.h"

#include <algorithm>
#include <array>

namespace Zorv::Render {

namespace {

struct FontFallback {
  std::string_view name;
  std::string_view substitute;  ///< of the same widths, or nearly; empty: none
  std::string_view generic;
};

constexpr std::string_view sansSerif = "sans-serif";
constexpr std::string_view serif = "serif";
constexpr std::string_view monospace = "monospace";
constexpr std::string_view cursive = "cursive";

constexpr std::array fontFallbacks{
    FontFallback{"Aptos", "Carlito", sansSerif},
    FontFallback{"Aptos Display", "Carlito", sansSerif},
    FontFallback{"Aptos Mono", "Liberation Mono", monospace},
    FontFallback{"Aptos Narrow", "Carlito", sansSerif},
    FontFallback{"Arial", "Liberation Sans", sansSerif},
    FontFallback{"Arial Black", "Liberation Sans", sansSerif},
    FontFallback{"Arial Narrow", "Liberation Sans Narrow", sansSerif},
    FontFallback{"Batang", "", serif},
    FontFallback{"Book Antiqua", "Liberation Serif", serif},
    FontFallback{"Bookman Old Style", "", serif},
    FontFallback{"Brush Script MT", "", cursive},
    FontFallback{"Calibri", "Carlito", sansSerif},
    FontFallback{"Calibri Light", "Carlito", sansSerif},
    FontFallback{"Cambria", "Caladea", serif},
    FontFallback{"Cambria Math", "Caladea", serif},
    FontFallback{"Candara", "Carlito", sansSerif},
    FontFallback{"Century", "", serif},
    FontFallback{"Century Gothic", "Liberation Sans", sansSerif},
    FontFallback{"Century Schoolbook", "", serif},
    FontFallback{"Comic Sans MS", "Comic Neue", cursive},
    FontFallback{"Consolas", "Liberation Mono", monospace},
    FontFallback{"Constantia", "", serif},
    FontFallback{"Corbel", "Carlito", sansSerif},
    FontFallback{"Courier", "Liberation Mono", monospace},
    FontFallback{"Courier New", "Liberation Mono", monospace},
    FontFallback{"DejaVu Sans Mono", "", monospace},
    FontFallback{"DejaVu Serif", "", serif},
    FontFallback{"Franklin Gothic Book", "Liberation Sans", sansSerif},
    FontFallback{"Franklin Gothic Medium", "Liberation Sans", sansSerif},
    FontFallback{"Garamond", "EB Garamond", serif},
    FontFallback{"Geneva", "Liberation Sans", sansSerif},
    FontFallback{"Georgia", "Gelasio", serif},
    FontFallback{"Gill Sans MT", "Liberation Sans", sansSerif},
    FontFallback{"Helvetica", "Liberation Sans", sansSerif},
    FontFallback{"Helvetica Neue", "Liberation Sans", sansSerif},
    FontFallback{"Lato", "Carlito", sansSerif},
    FontFallback{"Liberation Mono", "", monospace},
    FontFallback{"Liberation Serif", "", serif},
    FontFallback{"Lucida Console", "DejaVu Sans Mono", monospace},
    FontFallback{"Lucida Handwriting", "", cursive},
    FontFallback{"Lucida Sans", "DejaVu Sans", sansSerif},
    FontFallback{"Microsoft Sans Serif", "Liberation Sans", sansSerif},
    FontFallback{"Monaco", "DejaVu Sans Mono", monospace},
    FontFallback{"MS Gothic", "", monospace},
    FontFallback{"MS Mincho", "", serif},
    FontFallback{"MS PMincho", "", serif},
    FontFallback{"MS Sans Serif", "Liberation Sans", sansSerif},
    FontFallback{"Open Sans", "Liberation Sans", sansSerif},
    FontFallback{"Palatino Linotype", "Liberation Serif", serif},
    FontFallback{"Roboto", "Liberation Sans", sansSerif},
    FontFallback{"Rockwell", "Liberation Serif", serif},
    FontFallback{"Segoe Print", "", cursive},
    FontFallback{"Segoe Script", "", cursive},
    FontFallback{"Segoe UI", "Liberation Sans", sansSerif},
    FontFallback{"SimSun", "", serif},
    FontFallback{"Tahoma", "DejaVu Sans Condensed", sansSerif},
    FontFallback{"Times", "Liberation Serif", serif},
    FontFallback{"Times New Roman", "Liberation Serif", serif},
    FontFallback{"Trebuchet MS", "Liberation Sans", sansSerif},
    FontFallback{"Tw Cen MT", "Carlito", sansSerif},
    FontFallback{"Verdana", "DejaVu Sans", sansSerif},
};

char toLowerAscii(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isSameFont(std::string_view a, std::string_view b) noexcept {
  return std::ranges::equal(a, b, {}, toLowerAscii, toLowerAscii);
}

bool isFontName(std::string_view name) noexcept {
  constexpr std::size_t longest = 64;
  constexpr std::string_view strange = ",;\"'\\<>{}()&\x7F";
  constexpr char firstPrintable = ' ';
  return !name.empty() && name.size() <= longest && std::ranges::none_of(name, [&](char c) {
    return (c >= '\0' && c < firstPrintable) || strange.find(c) != std::string_view::npos;
  });
}

}  // namespace

std::vector<std::string> listFontFamilies(std::string_view name) {
  std::vector<std::string> families;
  if (isFontName(name)) {
    families.emplace_back(name);
  }
  auto const* const found = std::ranges::find_if(
      fontFallbacks, [&](FontFallback const& known) { return isSameFont(known.name, name); });
  if (found != fontFallbacks.end() && !found->substitute.empty()) {
    families.emplace_back(found->substitute);
  }
  families.emplace_back(found != fontFallbacks.end() ? found->generic : sansSerif);
  return families;
}

}  // namespace Zorv::Render
