#pragma once

#include <cstddef>

/// The widest texts in the columns of tables: longer ones would push the others out of sight.
namespace Zorv::Tool::ColumnWidths {

inline constexpr std::size_t number = 20;
inline constexpr std::size_t name = 40;
inline constexpr std::size_t value = 40;
inline constexpr std::size_t condition = 120;
inline constexpr std::size_t style = 160;
inline constexpr std::size_t rules = 200;

}  // namespace Zorv::Tool::ColumnWidths
