#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Zorv::Formulas {

/// The content of the brackets of a structured reference (ISO/IEC 29500-1, 18.17.2.6).
struct StructuredReferenceText {
  bool headers = false;
  bool data = false;
  bool totals = false;
  bool thisRow = false;
  std::optional<std::string> firstColumn;
  std::optional<std::string> lastColumn;
};

/// Reads a bracketed text such as `[Amount]`, `[[#Headers],[Amount]:[Total]]` or `[@Amount]`, with
/// its outer brackets. `position` is its place in the formula, for errors.
///
/// Throws FormulaParseError where it is none.
[[nodiscard]] StructuredReferenceText readStructuredReference(std::string_view text,
                                                              std::size_t position);

}  // namespace Zorv::Formulas
