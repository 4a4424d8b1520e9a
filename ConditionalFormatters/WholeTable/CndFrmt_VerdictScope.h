#pragma once

#include <cstdint>

#include "DOM/ConditionalFormat.h"

namespace Zorv::ConditionalFormatters {

/// The cells that share the verdict of a condition, whatever their values are.
enum class VerdictScope : std::uint8_t {
  Cell,    ///< none do
  Row,     ///< the cells of a row: `$L1="x"`
  Column,  ///< the cells of a column: `A$1="x"`
};

[[nodiscard]] VerdictScope findVerdictScope(DOM::ConditionalFormat const& format);

}  // namespace Zorv::ConditionalFormatters
