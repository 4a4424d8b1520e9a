#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "OfficeUtils/TimeZone.h"
#include "Utils/WorkBudget.h"
#include "workbook/Document.h"
#include "workbook/Recalculation/CellFormulas.h"

namespace Zorv::Workbook {

struct RecalculationOptions {
  std::string localeName;  ///< a BCP 47 tag or an ICU name
  DOM::TimeZone timeZone;
  /// The most cells that the calculated formulas may refer to, together.
  std::uint64_t positionLimit = 0;
  std::uint64_t stepLimit = 0;      ///< the most steps of all evaluations together
  std::uint64_t textByteLimit = 0;  ///< the most bytes of the texts that the formulas yield
  /// The most cells that array formulas may add to the document, together.
  std::uint64_t newCellLimit = 0;
  WorkBudget* budget = nullptr;  ///< borrowed; may be null
};

/// Calculates the formulas that have no result in the file and those that depend on the current
/// date or time, and adds findings: the number of the latter, and those that cannot be calculated.
/// Other results are never changed.
///
/// `missing` are the formulas without results. `all`, the formulas of all cells, is needed if any
/// depends on the current date or time.
///
/// Throws BaseRuntimeError for an unknown locale, and what the budget throws. Cost: that of the
/// formulas, up to the limits.
void recalculate(Document& document, CellFormulas missing, std::optional<CellFormulas> all,
                 RecalculationOptions const& options);

}  // namespace Zorv::Workbook
