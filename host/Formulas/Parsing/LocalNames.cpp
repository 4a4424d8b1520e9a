#include "Formulas/Parsing/LocalNames.h"

#include <algorithm>
#include <array>

#include "DOM/A1Notation.h"
#include "Formulas/Text/NamePrefixes.h"

namespace Zorv::Formulas {

std::optional<std::uint32_t> LocalNames::find(std::string_view name) const {
  if (_names.empty()) {
    return std::nullopt;
  }
  // The innermost of several equal names hides the others.
  auto const found = std::find_if(
      _names.rbegin(), _names.rend(),
      [key = toAsciiUpper(toPlainName(name))](auto const& given) { return given.first == key; });
  return found == _names.rend() ? std::nullopt : std::optional(found->second);
}

std::string LocalNames::toPlainName(std::string_view name) {
  constexpr std::array<std::string_view, 1> prefixes = {"_XLPM."};
  std::string_view const plain = withoutPrefixes(name, prefixes);
  bool const isCell = DOM::A1Notation::readCell(plain).shape == DOM::A1Notation::Shape::Inside;
  return std::string(isCell ? name : plain);
}

}  // namespace Zorv::Formulas
