#pragma once

#include <span>

#include "Formulas/Functions/FunctionEntry.h"

/// The rows of the table of functions, by family.
namespace Zorv::Formulas {

[[nodiscard]] std::span<FunctionEntry const> logicalFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> informationFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> mathFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> statisticalFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> conditionalSumFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> lookupFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> textFunctions() noexcept;
[[nodiscard]] std::span<FunctionEntry const> dateTimeFunctions() noexcept;

}  // namespace Zorv::Formulas
