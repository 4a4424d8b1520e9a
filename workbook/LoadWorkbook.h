#pragma once

#include <filesystem>
#include <string>

#include "OfficeUtils/TimeZone.h"
#include "workbook/Document.h"
#include "workbook/Limits.h"
#include "workbook/LoadError.h"

namespace Zorv::Workbook {

struct LoadOptions {
  Limits limits;
  /// For the formulas whose results the file does not have: a BCP 47 tag or an ICU name, and the
  /// zone in which they read the clock.
  std::string localeName = "en-US";
  DOM::TimeZone timeZone;
};

/// Reads an .xlsx or .xlsm workbook (ISO/IEC 29500, transitional or strict).
///
/// The file is only read, and closed before the operation returns. A rule that cannot be resolved
/// is kept with its reason, and the others go on; see Rule. Results of formulas are taken as the
/// file has them; those that it does not have are calculated. Throws LoadError where the file is
/// damaged, encrypted, no workbook, or beyond the limits, and BaseRuntimeError for an unknown
/// locale.
/// Cost: linear in the unpacked size; sheets are streamed, so memory follows the cells. Results
/// that are missing cost what their formulas cost, up to a limit.
[[nodiscard]] Document loadWorkbook(std::filesystem::path const& file,
                                    LoadOptions const& options = {});

}  // namespace Zorv::Workbook
