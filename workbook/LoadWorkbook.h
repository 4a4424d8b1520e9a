#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>

#include "OfficeUtils/TimeZone.h"
#include "Utils/WorkBudget.h"
#include "workbook/Document.h"
#include "workbook/Export.h"
#include "workbook/Limits.h"
#include "workbook/LoadError.h"
#include "workbook/Semantics.h"

namespace Zorv::Workbook {

/// How a workbook is read.
struct LoadOptions {
  Limits limits{};  ///< of the file
  /// Locale (a BCP 47 tag or an ICU name) and time zone in which formulas without results are
  /// calculated.
  std::string localeName = "en-US";
  DOM::TimeZone timeZone{};  ///< see `localeName`
  /// The file's name in messages; empty: its path, or `workbook in memory`.
  std::string name{};
  /// The meaning that the conditional formats are made with.
  Semantics semantics = Semantics::Own;
  /// Bounds the work and the memory of loading; borrowed, null for no bound besides the limits.
  WorkBudget* budget = nullptr;
};

/// Reads an .xlsx or .xlsm workbook (ISO/IEC 29500, transitional or strict).
///
/// The file is never changed, and closed before the function returns. A rule that cannot be
/// resolved is kept with its reason; see Rule. The results of formulas are taken from the file;
/// those that are missing are calculated, and those that depend on the current date or time (TODAY,
/// NOW) are calculated again, for the moment that OfficeUtils::PinnedMoment::readMoment() gives.
///
/// Throws LoadError if the file is damaged, encrypted, not a workbook, or beyond the limits;
/// BaseRuntimeError for an unknown locale; and what the budget throws. Cost: linear in the unpacked
/// size. Sheets are streamed, so memory grows with the number of cells. Missing results cost what
/// their formulas cost, up to a limit.
[[nodiscard]] ZORV_WORKBOOK_EXPORT Document loadWorkbook(std::filesystem::path const& file,
                                                         LoadOptions const& options = {});

/// The same for a file in memory. The bytes are borrowed for the time of the call, and not copied.
[[nodiscard]] ZORV_WORKBOOK_EXPORT Document loadWorkbook(std::span<std::byte const> file,
                                                         LoadOptions const& options = {});

}  // namespace Zorv::Workbook
