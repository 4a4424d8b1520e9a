#include "Formulas/Values/FunctionTable.h"

#include <algorithm>
#include <array>
#include <string>

#include "Formulas/Text/NamePrefixes.h"
#include "Utils/CaseFolding.h"

namespace Zorv::Formulas {

namespace {

constexpr std::string_view nameOf(FunctionEntry const* entry) noexcept { return entry->name; }

}  // namespace

FunctionTable::FunctionTable(std::span<Family const> families) {
  for (Family const family : families) {
    for (FunctionEntry const& entry : family()) {
      _entries.push_back(&entry);
    }
  }
  std::ranges::sort(_entries, {}, nameOf);
}

std::optional<std::uint16_t> FunctionTable::find(std::string_view name) const {
  std::string const plain = toPlainFunctionName(name);
  auto const found = std::ranges::lower_bound(_entries, std::string_view(plain), {}, nameOf);
  if (found == _entries.end() || nameOf(*found) != plain) {
    return std::nullopt;
  }
  return static_cast<std::uint16_t>(found - _entries.begin());
}

std::string toPlainFunctionName(std::string_view name) {
  constexpr std::array<std::string_view, 3> prefixes = {"_XLFN.", "_XLWS.", "_XLUDF."};
  return toAsciiUpper(withoutPrefixes(name, prefixes));
}

}  // namespace Zorv::Formulas
