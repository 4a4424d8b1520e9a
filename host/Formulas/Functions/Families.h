#pragma once

#include <span>

#include "Formulas/Values/FunctionEntry.h"

/// The rows of the table of functions, by family.
namespace Zorv::Formulas {

[[nodiscard]] std::span<FunctionEntry const> logicalFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> choiceFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> iterationFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> informationFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> kindFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> referenceInformationFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> cellInformationFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> mathFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> statisticalFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> dispersionFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> rankFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> regressionFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> distributionFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> conditionalSumFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> lookupFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> searchFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> addressingFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> reshapingFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> textFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> dateTimeFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> powerFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> trigonometricFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> multipleFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> productFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> randomFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> numberBaseFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> romanNumeralFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> aggregateFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> timeFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> dateSpanFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> workDayFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> textEditingFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> textFormatFunctions() noexcept;

}  // namespace Zorv::Formulas
