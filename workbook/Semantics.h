#pragma once

#include <cstdint>

namespace Zorv::Workbook {

/// The meaning of conditions. docs/semantics.md lists where the two differ.
enum class Semantics : std::uint8_t {
  Own,         ///< of the library
  Widespread,  ///< of spreadsheet programs at large
};

}  // namespace Zorv::Workbook
