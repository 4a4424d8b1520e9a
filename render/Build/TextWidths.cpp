#include "render/Build/TextWidths.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "Utils/CaseFolding.h"

namespace Zorv::Render {

namespace {

constexpr double pixelsPerPoint = 96.0 / 72.0;
constexpr unsigned firstPrintable = 0x20;

/// Widths of the printable characters of ASCII in a proportional font without serifs, in
/// thousandths of its size.
constexpr std::array<std::uint16_t, 95> regularWidths{
    226, 326, 401, 498, 507, 715, 682, 221, 303, 303, 498, 498, 250, 306, 252, 386, 507, 507, 507,
    507, 507, 507, 507, 507, 507, 507, 268, 268, 498, 498, 498, 463, 894, 579, 544, 533, 615, 488,
    459, 631, 623, 252, 319, 520, 420, 855, 646, 662, 517, 673, 543, 459, 487, 642, 567, 890, 519,
    487, 468, 307, 386, 307, 498, 498, 291, 479, 525, 423, 525, 498, 305, 471, 525, 229, 239, 455,
    229, 799, 525, 527, 525, 525, 349, 391, 335, 525, 452, 715, 433, 453, 395, 314, 460, 314, 498};
constexpr double digitMilliems = 507;
constexpr double boldFactor = 1.028;  ///< of letters; digits are as wide
constexpr double averageMilliems = 540;
constexpr double wideMilliems = 1'000;
constexpr double monospacedMilliems = 600;

/// How wide and high the letters of a font are, compared with the table.
struct Family {
  std::string_view name;  ///< its beginning, in lower case
  double width;
  double height;  ///< of a line, in parts of the font's size
  bool isMonospaced = false;
};

constexpr Family usualFamily{"", 1, 1.22};
constexpr std::array families{
    Family{"arial", 1.1, 1.15},           Family{"helvetica", 1.1, 1.15},
    Family{"liberation sans", 1.1, 1.15}, Family{"segoe ui", 1.08, 1.33},
    Family{"tahoma", 1.1, 1.21},          Family{"verdana", 1.28, 1.22},
    Family{"dejavu sans", 1.25, 1.17},    Family{"trebuchet", 1.04, 1.16},
    Family{"aptos narrow", 1.0, 1.3},     Family{"aptos", 1.1, 1.3},
    Family{"times", 1.0, 1.15},           Family{"liberation serif", 1.0, 1.15},
    Family{"cambria", 1.08, 1.17},        Family{"georgia", 1.12, 1.14},
    Family{"courier", 1, 1.13, true},     Family{"liberation mono", 1, 1.13, true},
    Family{"consolas", 0.92, 1.17, true},
};

Family const& findFamily(std::string_view name) noexcept {
  auto const* const found = std::ranges::find_if(families, [name](Family const& family) {
    return name.size() >= family.name.size() &&
           std::ranges::equal(name.substr(0, family.name.size()), family.name, {}, toAsciiLower);
  });
  return found != families.end() ? *found : usualFamily;
}

/// Width of a character of several bytes, by its first one: from U+3000 on, scripts are mostly
/// written in squares.
double widthOfLead(unsigned char lead, unsigned char next) noexcept {
  constexpr unsigned char firstOfThree = 0xE0;
  constexpr unsigned char firstSquare = 0xE3;
  if (lead < firstOfThree) {
    // Marks that combine with the letter before them (U+0300 to U+036F) take no room.
    bool const combines = lead == 0xCC || (lead == 0xCD && next < 0xB0);
    return combines ? 0 : averageMilliems;
  }
  return lead >= firstSquare ? wideMilliems : averageMilliems;
}

double widthInTable(unsigned char character) noexcept {
  bool const isPrintable =
      firstPrintable <= character && character < firstPrintable + regularWidths.size();
  return isPrintable ? regularWidths[character - firstPrintable] : 0;
}

bool isContinuation(unsigned char byte) noexcept { return (byte & 0xC0U) == 0x80U; }

bool isDigitOrSpace(unsigned char c) noexcept { return ('0' <= c && c <= '9') || c == ' '; }

}  // namespace

FontMeasures findMeasures(Font const& font) noexcept {
  constexpr double rowPadding = 2;
  Family const& family = findFamily(font.name);
  double const pixels = font.size * pixelsPerPoint;
  // The table's digit is 7.4 pixels wide at 11 points, and 7 where programs round it for columns.
  constexpr double ordinaryPixels = 11 * pixelsPerPoint;
  constexpr double ordinaryDigit = 7;
  constexpr double rounding = ordinaryDigit * 1'000 / (digitMilliems * ordinaryPixels);
  FontMeasures measures;
  measures.emPixels = pixels / 1'000 * family.width * rounding;
  measures.isMonospaced = family.isMonospaced;
  measures.isBold = font.bold;
  measures.digit = measures.emPixels * (family.isMonospaced ? monospacedMilliems : digitMilliems);
  measures.lineHeight = std::round(pixels * family.height + rowPadding);
  return measures;
}

double findDigitWidth(Font const& font) noexcept {
  Family const& family = findFamily(font.name);
  double const milliems = family.isMonospaced ? monospacedMilliems : digitMilliems;
  return std::max(std::round(font.size * pixelsPerPoint * family.width * milliems / 1'000), 1.0);
}

double measureText(std::string_view text, FontMeasures const& font) noexcept {
  double letters = 0;
  double others = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto const byte = static_cast<unsigned char>(text[i]);
    if (isContinuation(byte)) {
      continue;
    }
    constexpr unsigned char firstOfSeveral = 0x80;
    auto const next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
    double const width = byte >= firstOfSeveral ? widthOfLead(byte, next) : widthInTable(byte);
    double const inFont = font.isMonospaced && width > 0
                              ? std::max(monospacedMilliems, width == wideMilliems ? width : 0.0)
                              : width;
    (isDigitOrSpace(byte) ? others : letters) += inFont;
  }
  bool const isWidened = font.isBold && !font.isMonospaced;
  return (letters * (isWidened ? boldFactor : 1) + others) * font.emPixels;
}

double countWrappedLines(std::string_view text, FontMeasures const& font, double width) noexcept {
  double lines = 0;
  double const room = std::max(width, 1.0);
  while (true) {
    std::size_t const end = std::min(text.find('\n'), text.size());
    double used = 0;
    double wrapped = 1;
    std::string_view rest = text.substr(0, end);
    while (!rest.empty()) {
      std::size_t const wordEnd = std::min(rest.find(' '), rest.size() - 1) + 1;
      double const word = measureText(rest.substr(0, wordEnd), font);
      if (used > 0 && used + word > room) {
        ++wrapped;
        used = 0;
      }
      // A word wider than the cell is broken.
      double const broken = std::max(std::ceil(word / room) - 1, 0.0);
      wrapped += broken;
      used += word - broken * room;
      rest.remove_prefix(wordEnd);
    }
    lines += wrapped;
    if (end == text.size()) {
      return lines;
    }
    text.remove_prefix(end + 1);
  }
}

}  // namespace Zorv::Render
