#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Utils/CellIndex.h"
#include "workbook/Rule.h"

namespace Zorv::Tool {

enum class ProblemKind : std::uint8_t {
  NotResolved,  ///< the rule is read, but does not count
  Doubtful,     ///< the rule counts, but refers to what the document lacks
  Failed,       ///< the rule could not be evaluated for some cells
};

/// The word for a kind in messages and JSON.
[[nodiscard]] std::string_view toText(ProblemKind kind) noexcept;

/// Problem of one rule.
struct Problem {
  Workbook::Rule const* rule;
  ProblemKind kind;
  std::string reason;
  std::uint64_t cellCount = 0;                           ///< of failed cells
  CellIndex firstCell{RowIndex(0UL), ColumnIndex(0UL)};  ///< the first failed cell
};

}  // namespace Zorv::Tool
