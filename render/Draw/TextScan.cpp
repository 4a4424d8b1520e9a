#include "render/Draw/TextScan.h"

#include <glib.h>
#include <hb.h>

#include <algorithm>
#include <cmath>

#include "render/Draw/Typeface.h"

namespace Zorv::Render::Draw {

namespace {

/// Characters are hardly ever narrower, nor longer in UTF-8.
constexpr double narrowest = 0.2;
constexpr double longestCharacter = 4;

bool isInsideCharacter(std::string_view text, std::size_t place) noexcept {
  return place < text.size() && (static_cast<unsigned char>(text[place]) & 0xC0U) == 0x80U;
}

struct ScannedCharacter {
  gunichar character = 0;
  std::size_t bytes = 1;
};

/// The first character of a text. A malformed byte counts as one without properties.
ScannedCharacter scan(std::string_view text) noexcept {
  constexpr auto malformed = static_cast<gunichar>(-2);
  gunichar const character =
      g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
  if (character >= malformed) {
    return {};
  }
  return {character, static_cast<std::size_t>(g_unichar_to_utf8(character, nullptr))};
}

}  // namespace

std::string_view cutToPlace(std::string_view text, TextPlace const& place) noexcept {
  double const size = std::max(1.0, findPixelSize(place.look.font));
  // Turned texts lie along the diagonal at most.
  double const length = std::hypot(place.allowed.width(), place.allowed.height());
  double const perLine = length / (size * narrowest) + 2;
  double const lines = length / size + 2;
  auto const most = static_cast<std::size_t>(perLine * lines * longestCharacter);
  if (text.size() <= most) {
    return text;
  }
  bool const showsEnd = place.horizontal == DOM::HorizontalAlignment::Right && !place.look.wraps &&
                        place.cell.runs == 0;
  std::size_t cut = showsEnd ? text.size() - most : most;
  while (isInsideCharacter(text, cut)) {
    ++cut;
  }
  return showsEnd ? text.substr(cut) : text.substr(0, cut);
}

std::string stackLetters(std::string_view text) {
  std::string stacked;
  while (!text.empty()) {
    ScannedCharacter const next = scan(text);
    if (!stacked.empty() && g_unichar_ismark(next.character) == FALSE) {
      stacked += '\n';
    }
    stacked += text.substr(0, next.bytes);
    text.remove_prefix(next.bytes);
  }
  return stacked;
}

bool beginsRightToLeft(std::string_view text) noexcept {
  while (!text.empty()) {
    ScannedCharacter const next = scan(text);
    hb_script_t const script = hb_unicode_script(hb_unicode_funcs_get_default(), next.character);
    bool const isLetter =
        script != HB_SCRIPT_COMMON && script != HB_SCRIPT_INHERITED && script != HB_SCRIPT_UNKNOWN;
    if (isLetter) {
      return hb_script_get_horizontal_direction(script) == HB_DIRECTION_RTL;
    }
    text.remove_prefix(next.bytes);
  }
  return false;
}

}  // namespace Zorv::Render::Draw
