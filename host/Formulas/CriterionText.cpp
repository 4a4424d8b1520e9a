#include "Formulas/CriterionText.h"

#include <cmath>
#include <cstdint>

#include "Formulas/Text/Texts.h"
#include "Formulas/Text/ValueText.h"

namespace Zorv::Formulas {

namespace {

/// Appends a code point: ASCII as it is, others in three bytes of which the first is none of ASCII,
/// so that no two sequences of code points give one text.
void appendCode(std::int32_t code, std::string& text) {
  constexpr std::int32_t endOfAscii = 0x80;
  if (code < endOfAscii) {
    text.push_back(static_cast<char>(code));
    return;
  }
  constexpr unsigned lead = 0x80;
  auto const bits = static_cast<std::uint32_t>(code);
  for (std::uint32_t const byte : {lead | (bits >> 16U), (bits >> 8U) & 0xFFU, bits & 0xFFU}) {
    text.push_back(static_cast<char>(byte));
  }
}

}  // namespace

CriterionText readCriterionText(std::string_view text, OfficeUtils::LocaleContext const& locale) {
  auto const number = readValue(text, locale);
  if (number && std::isfinite(*number)) {
    return *number;
  }
  std::string folded;
  folded.reserve(text.size());
  while (!text.empty()) {
    appendCode(takeFolded(text), folded);
  }
  return folded;
}

}  // namespace Zorv::Formulas
