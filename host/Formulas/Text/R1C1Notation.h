#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Reads and writes references in R1C1 notation (ISO/IEC 29500-1, 18.17.2.3), such as `R2C3`,
/// `R[-1]C:RC[2]` or `C3`.
namespace Zorv::Formulas::R1C1Notation {

/// A rectangle of positions that count from 0; both corners belong to it.
struct Corners {
  std::uint32_t firstRow = 0;
  std::uint32_t firstColumn = 0;
  std::uint32_t lastRow = 0;
  std::uint32_t lastColumn = 0;
};

/// Reads a whole text, without a sheet, as seen from a cell. Nothing for any other text, or for a
/// reference off the sheet.
[[nodiscard]] std::optional<Corners> read(std::string_view text, std::uint32_t row,
                                          std::uint32_t column) noexcept;

/// Writes a cell such as `R7C2`. A relative coordinate is the number from 1 in brackets: `R7C[2]`.
[[nodiscard]] std::string write(std::uint32_t row, std::uint32_t column, bool isRowAbsolute,
                                bool isColumnAbsolute);

}  // namespace Zorv::Formulas::R1C1Notation
