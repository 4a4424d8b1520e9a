#pragma once

#include <string>
#include <vector>

#include "OfficeUtils/TimeZone.h"
#include "Utils/WorkBudget.h"
#include "analysis/Check/CheckFinding.h"
#include "workbook/Document.h"

namespace Zorv::Analysis {

struct CheckOptions {
  /// Locale (a BCP 47 tag or an ICU name) and time zone in which conditions are evaluated.
  std::string localeName = "en-US";
  DOM::TimeZone timeZone{};
  /// Bounds the work; borrowed, null for none.
  WorkBudget* budget = nullptr;
  /// Sheets to look at, by index; nothing: all of them, and the workbook as a whole.
  std::vector<std::size_t> sheets = {};
};

/// Looks for rules that are broken, dead, repeated, slow, or hardly meant as they are written.
///
/// Findings are ordered by sheet, then by rule, then by code; those about the workbook as a whole
/// come last. Conditions of the current date are evaluated for the moment that
/// OfficeUtils::PinnedMoment::readMoment() gives.
///
/// Expects a document of its own semantics; for one that was loaded with Semantics::Widespread, no
/// differences from other programs are found. Throws BaseRuntimeError for an unknown locale, and
/// what the budget throws. Cost: each condition is evaluated twice for each of its cells inside
/// the used range of the sheet, up to 5,000,000 cells of a sheet; rules are compared with their
/// like, up to 1,000 each.
[[nodiscard]] std::vector<CheckFinding> check(Workbook::Document const& document,
                                              CheckOptions const& options = {});

}  // namespace Zorv::Analysis
