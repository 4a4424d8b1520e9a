#include "Formulas/Functions/FunctionRegistry.h"

#include <algorithm>
#include <array>
#include <string>

#include "Formulas/Functions/Families.h"
#include "Formulas/Parsing/Characters.h"

namespace Zorv::Formulas {

namespace {

constexpr std::array families = {
    logicalFunctions,
    informationFunctions,
    mathFunctions,
    statisticalFunctions,
    conditionalSumFunctions,
    lookupFunctions,
    textFunctions,
    dateTimeFunctions,
    powerFunctions,
    trigonometricFunctions,
    multipleFunctions,
    productFunctions,
    randomFunctions,
    numberBaseFunctions,
    romanNumeralFunctions,
    aggregateFunctions,
    timeFunctions,
    dateSpanFunctions,
    workDayFunctions,
    textEditingFunctions,
    textFormatFunctions,
    choiceFunctions,
    kindFunctions,
    referenceInformationFunctions,
    cellInformationFunctions,
    dispersionFunctions,
    rankFunctions,
    regressionFunctions,
    distributionFunctions,
    searchFunctions,
    addressingFunctions,
    reshapingFunctions,
};

constexpr std::string_view nameOf(FunctionEntry const* entry) noexcept { return entry->name; }

}  // namespace

FunctionRegistry const& FunctionRegistry::get() {
  static FunctionRegistry const registry;
  return registry;
}

FunctionRegistry::FunctionRegistry() {
  for (auto const family : families) {
    for (FunctionEntry const& entry : family()) {
      _entries.push_back(&entry);
    }
  }
  std::ranges::sort(_entries, {}, nameOf);
}

std::optional<std::uint16_t> FunctionRegistry::find(std::string_view name) const {
  std::string const plain = toPlainFunctionName(name);
  auto const found = std::ranges::lower_bound(_entries, std::string_view(plain), {}, nameOf);
  if (found == _entries.end() || nameOf(*found) != plain) {
    return std::nullopt;
  }
  return static_cast<std::uint16_t>(found - _entries.begin());
}

std::string toPlainFunctionName(std::string_view name) {
  std::string plain = toUpperAscii(name);
  for (std::string_view const prefix : {"_XLFN.", "_XLWS.", "_XLUDF."}) {
    if (plain.starts_with(prefix)) {
      plain.erase(0, prefix.size());
    }
  }
  return plain;
}

}  // namespace Zorv::Formulas
