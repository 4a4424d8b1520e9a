#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "DOM/SharedStyle.h"
#include "OfficeUtils/Clock.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"
#include "Utils/WorkBudget.h"
#include "visuals/CellVisuals.h"
#include "workbook/Document.h"

namespace Zorv::Analysis {

/// A document at a moment. Borrows the document.
struct DocumentVersion {
  Workbook::Document const* document = nullptr;
  OfficeUtils::Clock::TimePoint moment;
};

/// How conditional formats are resolved.
struct CompareOptions {
  std::string localeName = "en-US";
  DOM::TimeZone timeZone = {};
  unsigned threadCount = 1;
  WorkBudget* budget = nullptr;         ///< borrowed; null for no bound
  std::vector<TableRange> ranges = {};  ///< nothing outside is compared; none: everything is
};

/// Style and visuals that the conditional formats give a cell.
struct CellLook {
  DOM::SharedCellStylePtr style;  ///< null if no format holds
  Visuals::CellVisuals visuals;   ///< borrows records of the document
  bool hasFailed = false;         ///< a condition or a threshold could not be evaluated
};

/// Equality by value: styles and visuals of different documents are different objects.
[[nodiscard]] bool isSameLook(CellLook const& a, CellLook const& b) noexcept;

/// A cell that looks different. Borrows everything for the duration of a visitor's call.
struct CellDifference {
  std::size_t firstSheet;
  std::size_t secondSheet;
  CellIndex cell;
  CellLook const& first;
  CellLook const& second;
};

using DifferenceVisitor = std::function<void(CellDifference const&)>;

/// Visits every position that looks different in two versions of a sheet, row by row, and returns
/// the number of positions that were compared; see findComparedAreas() for these.
///
/// Memory: the looks of some ten thousand positions at a time. Throws what the budget and the
/// visitor throw, and BaseRuntimeError for an unknown locale.
std::uint64_t compareSheets(DocumentVersion const& first, std::size_t firstSheet,
                            DocumentVersion const& second, std::size_t secondSheet,
                            CompareOptions const& options, DifferenceVisitor const& visitor);

}  // namespace Zorv::Analysis
