#pragma once

#include <string>
#include <string_view>

namespace Zorv::Formulas {

/// Properties of a number format for CELL.
struct NumberFormatClass {
  std::string code = "G";          ///< `F2`, `,0`, `C2-`, `P0`, `S2`, `D4`, `G` for all others
  bool hasNegativeColour = false;  ///< negative numbers have a colour of their own
  bool hasParentheses = false;     ///< around positive numbers
};

/// Classes a format in the notation of ISO/IEC 29500-1, 18.8.31.
[[nodiscard]] NumberFormatClass classifyNumberFormat(std::string_view format);

}  // namespace Zorv::Formulas
