#include "Formulas/Functions/BuiltinFunctions.h"

#include <array>

#include "Formulas/Functions/Families.h"

namespace Zorv::Formulas {

namespace {

constexpr std::array<FunctionTable::Family, 33> families = {
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
    iterationFunctions,
};

}  // namespace

std::span<FunctionTable::Family const> builtinFamilies() noexcept { return families; }

FunctionTable const& builtinFunctions() {
  static FunctionTable const table(families);
  return table;
}

}  // namespace Zorv::Formulas
