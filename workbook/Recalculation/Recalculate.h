#pragma once

#include <cstdint>
#include <string>

#include "OfficeUtils/TimeZone.h"
#include "workbook/Document.h"
#include "workbook/Recalculation/FormulasWithoutResults.h"

namespace Zorv::Workbook {

struct RecalculationOptions {
  std::string localeName;  ///< a BCP 47 tag or an ICU name
  DOM::TimeZone timeZone;
  /// The most cells that the calculated formulas may refer to, together.
  std::uint64_t positionLimit = 0;
  /// The most cells that array formulas may add to the document, together.
  std::uint64_t newCellLimit = 0;
};

/// Calculates the formulas that have no result in the file, and adds a finding for those that
/// cannot be calculated. Results that the file has are never changed.
///
/// Throws BaseRuntimeError for an unknown locale. Cost: that of the formulas, up to the limits.
void recalculate(Document& document, FormulasWithoutResults missing,
                 RecalculationOptions const& options);

}  // namespace Zorv::Workbook
