#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "workbook/Document.h"
#include "workbook/Limits.h"
#include "workbook/Package/Archive.h"
#include "workbook/Read/MissingResult.h"

namespace Zorv::Workbook {

/// What the readers of the parts of one file share.
struct LoadState {
  Archive& archive;
  Limits limits;
  Document& document;
  std::uint64_t cellCount = 0;
  std::uint64_t ruleAreaCount = 0;
  std::vector<FormulaSource> formulas{};
  std::vector<MissingResult> missingResults{};

  /// Notes what was read another way than it was meant; a flood of the like is cut short.
  void report(Finding finding);
};

}  // namespace Zorv::Workbook
