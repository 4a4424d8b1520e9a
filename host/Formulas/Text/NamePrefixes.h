#pragma once

#include <algorithm>
#include <span>
#include <string_view>

#include "Formulas/Text/Characters.h"
#include "Utils/CaseFolding.h"

namespace Zorv::Formulas {

/// A name without the prefixes that files put before it, which may stand in any case of letters. A
/// prefix before what is no name by itself is a part of the name. Borrows the text.
[[nodiscard]] inline std::string_view withoutPrefixes(
    std::string_view name, std::span<std::string_view const> prefixes) noexcept {
  auto const isBefore = [&](std::string_view prefix) {
    return name.size() > prefix.size() && isIdentifierStart(name[prefix.size()]) &&
           std::ranges::equal(name.substr(0, prefix.size()), prefix, {},
                              [](char c) { return toAsciiUpper(c); });
  };
  auto found = std::ranges::find_if(prefixes, isBefore);
  while (found != prefixes.end()) {
    name.remove_prefix(found->size());
    found = std::ranges::find_if(prefixes, isBefore);
  }
  return name;
}

}  // namespace Zorv::Formulas
