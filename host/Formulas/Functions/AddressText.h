#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Writing references as formulas write them. Positions count from 0.
namespace Zorv::Formulas::AddressText {

/// The letters of a column: `A`, `XFD`.
[[nodiscard]] std::string writeColumn(std::uint32_t column);

/// Such as `$B$7`, `B$7`.
[[nodiscard]] std::string writeA1(std::uint32_t row, std::uint32_t column, bool isRowAbsolute,
                                  bool isColumnAbsolute);

/// Such as `R7C2`; what is relative stands in brackets, as it is counted from 1: `R7C[2]`.
[[nodiscard]] std::string writeR1C1(std::uint32_t row, std::uint32_t column, bool isRowAbsolute,
                                    bool isColumnAbsolute);

/// A sheet's name and an exclamation mark, in apostrophes where formulas need them.
[[nodiscard]] std::string writeSheet(std::string_view name);

}  // namespace Zorv::Formulas::AddressText
