#include "render/Build/CellTexts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include <boost/variant/get.hpp>

#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::Render {

namespace {

using DOM::HorizontalAlignment;

/// Room beside a number: spreadsheet programs leave it when they count how many digits fit.
constexpr double digitPadding = 5;
/// Room beside a text that must fit.
constexpr double leastPadding = 2;
/// Characters that a fill is repeated to at most.
constexpr std::size_t mostFill = 1'000;
constexpr std::size_t longestText = 32'767;

std::string makeHashes(StyleLook const& look, double width) {
  double const count = std::floor((width - leastPadding) / (look.measures.digit + 1));
  std::string hashes(static_cast<std::size_t>(std::clamp(count, 1.0, 255.0)), '#');
  return hashes;
}

bool fits(std::string_view text, StyleLook const& look, double width) noexcept {
  return !look.isFixedInWidth || measureText(text, look.measures) <= width - leastPadding;
}

/// Characters that a number in general format may have.
unsigned countGeneralCharacters(StyleLook const& look, double width) noexcept {
  constexpr double most = 11;
  if (!look.isFixedInWidth) {
    return static_cast<unsigned>(most);
  }
  double const count = std::floor((width - digitPadding) / look.measures.digit);
  return static_cast<unsigned>(std::clamp(count, 0.0, most));
}

std::string repeat(std::string_view text, std::size_t count) {
  std::string repeated;
  for (std::size_t i = 0; i < count; ++i) {
    repeated += text;
  }
  return repeated;
}

/// How often a text fits into a width.
std::size_t countRepetitions(std::string_view text, StyleLook const& look, double width) noexcept {
  double const each = std::max(measureText(text, look.measures), 1.0);
  return static_cast<std::size_t>(
      std::clamp(std::floor(width / each), 0.0, static_cast<double>(mostFill)));
}

bool areSpaces(std::string_view text) noexcept {
  return text.find_first_not_of(' ') == std::string_view::npos;
}

/// Lays out a text with a fill: in two pieces, or at one edge where the other piece is empty.
void applyFill(OfficeUtils::ShownText& shown, StyleLook const& look, double width,
               CellText& result) {
  std::size_t const at = *shown.fillAt;
  if (!areSpaces(shown.fill)) {
    double const room = width - 2 * leastPadding - measureText(shown.text, look.measures);
    shown.text.insert(at, repeat(shown.fill, countRepetitions(shown.fill, look, room)));
    result.horizontal = HorizontalAlignment::Left;
  } else if (areSpaces(std::string_view(shown.text).substr(0, at))) {
    shown.text.erase(0, at);
    result.horizontal = HorizontalAlignment::Right;
  } else if (areSpaces(std::string_view(shown.text).substr(at))) {
    shown.text.erase(at);
    result.horizontal = HorizontalAlignment::Left;
  } else {
    result.splitAt = static_cast<std::uint32_t>(at);
  }
}

/// A text that is repeated as often as it fits; at least once.
void repeatToWidth(StyleLook const& look, double width, CellText& result) {
  if (look.horizontal == HorizontalAlignment::Fill && !result.splitAt && !result.text.empty()) {
    std::size_t const count = countRepetitions(result.text, look, width - 2 * leastPadding);
    result.text = repeat(result.text, std::max<std::size_t>(count, 1));
    result.isAsStored = result.isAsStored && count <= 1;
    result.horizontal = HorizontalAlignment::Left;
  }
}

/// The lead bytes of scripts that are written from right to left: Hebrew to Thaana, and their
/// presentation forms.
bool isRightToLeft(unsigned char lead, unsigned char next) noexcept {
  bool const isBasic = 0xD6 <= lead && lead <= 0xDF;
  bool const isForm =
      lead == 0xEF && ((0xAC <= next && next <= 0xB7) || (0xB9 <= next && next <= 0xBB));
  return isBasic || isForm || (lead == 0xE0 && next < 0xA4);
}

bool isLetter(unsigned char byte) noexcept {
  constexpr unsigned char firstOfSeveral = 0x80;
  constexpr unsigned char caseBit = 0x20;
  unsigned char const lower = byte | caseBit;
  return byte >= firstOfSeveral || ('a' <= lower && lower <= 'z');
}

/// Control characters become spaces; line ends do not if `keepsLines`.
void removeControls(std::string& text, bool keepsLines) noexcept {
  constexpr unsigned char firstPrintable = 0x20;
  constexpr unsigned char deleteCharacter = 0x7F;
  for (char& c : text) {
    auto const byte = static_cast<unsigned char>(c);
    bool const isControl = byte < firstPrintable || byte == deleteCharacter;
    c = isControl && !(keepsLines && c == '\n') ? ' ' : c;
  }
}

void cut(std::string& text) {
  if (text.size() <= longestText) {
    return;
  }
  std::size_t end = longestText;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
    --end;
  }
  text.resize(end);
  text += "...";
}

}  // namespace

std::string cleanText(std::string_view text, bool wraps) {
  std::string clean;
  clean.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    bool const isPair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
    clean += text[i] == '\r' && wraps ? '\n' : text[i];
    i += isPair ? 1 : 0;
  }
  removeControls(clean, wraps);
  return clean;
}

CellText CellTexts::write(FormulaModel::FormulaValue const& value, StyleLook const& look,
                          double width) const {
  switch (value.which()) {
    case FormulaModel::FormulaValueKind::Number:
      return writeNumber(boost::get<FormulaModel::FormulaNumber>(value).value.get(), look, width);
    case FormulaModel::FormulaValueKind::String:
      return writeString(boost::get<FormulaModel::FormulaString>(value).value, look, width);
    case FormulaModel::FormulaValueKind::Boolean:
      return writeWord(boost::get<FormulaModel::FormulaBoolean>(value).value
                           ? _locale.getTrueText()
                           : _locale.getFalseText(),
                       CellContent::Boolean, look, width);
    case FormulaModel::FormulaValueKind::Error:
      return writeWord(
          std::string(FormulaModel::toText(boost::get<FormulaModel::FormulaError>(value).code)),
          CellContent::Error, look, width);
    default:
      return {};
  }
}

CellText CellTexts::writeNumber(double number, StyleLook const& look, double width) const {
  CellText result;
  result.content = CellContent::Number;
  result.horizontal = look.horizontal == HorizontalAlignment::General ? HorizontalAlignment::Right
                                                                      : look.horizontal;
  auto shown = look.format->showNumber(number, _locale, countGeneralCharacters(look, width));
  if (!shown || (!fits(shown->text, look, width) && !look.format->isGeneral(number))) {
    result.text = makeHashes(look, width);
    return result;
  }
  result.colour = shown->colour;
  removeControls(shown->text, false);
  if (shown->fillAt) {
    applyFill(*shown, look, width, result);
  }
  result.text = std::move(shown->text);
  repeatToWidth(look, width, result);
  return result;
}

CellText CellTexts::writeString(std::string const& value, StyleLook const& look,
                                double width) const {
  CellText result;
  result.content = CellContent::Text;
  std::string const clean = cleanText(value, look.wraps);
  auto shown = look.format->showText(clean);
  result.isAsStored = shown.text == clean && !shown.fillAt;
  result.colour = shown.colour;
  removeControls(shown.text, look.wraps);
  result.horizontal =
      look.horizontal == HorizontalAlignment::General ? findSide(shown.text) : look.horizontal;
  if (shown.fillAt) {
    applyFill(shown, look, width, result);
  }
  cut(shown.text);
  result.text = std::move(shown.text);
  repeatToWidth(look, width, result);
  return result;
}

CellText CellTexts::writeWord(std::string word, CellContent content, StyleLook const& look,
                              double width) {
  CellText result;
  result.content = content;
  result.horizontal = look.horizontal == HorizontalAlignment::General ? HorizontalAlignment::Center
                                                                      : look.horizontal;
  result.text = fits(word, look, width) ? std::move(word) : makeHashes(look, width);
  repeatToWidth(look, width, result);
  return result;
}

/// The side at which a text begins, by its first letter.
HorizontalAlignment CellTexts::findSide(std::string_view text) const noexcept {
  auto const* const letter =
      std::ranges::find_if(text, [](char c) { return isLetter(static_cast<unsigned char>(c)); });
  if (letter == text.end()) {
    return _rightToLeft ? HorizontalAlignment::Right : HorizontalAlignment::Left;
  }
  auto const next = static_cast<unsigned char>(letter + 1 < text.end() ? letter[1] : '\0');
  return isRightToLeft(static_cast<unsigned char>(*letter), next) ? HorizontalAlignment::Right
                                                                  : HorizontalAlignment::Left;
}

}  // namespace Zorv::Render
