#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Utils/TableRange.h"
#include "workbook/Document.h"
#include "workbook/LoadWorkbook.h"
#include "workbook/Package/CopyPackage.h"

namespace Zorv::Analysis {

/// Rules that become one.
struct JoinedRules {
  std::size_t rule = 0;             ///< number of the rule that stays, with its priority
  std::vector<std::size_t> joined;  ///< numbers of those that become part of it, ascending
  std::vector<TableRange> ranges;   ///< afterwards
};

/// A rule that can never show.
struct DeadRule {
  std::size_t rule = 0;  ///< number
  /// Number of the earlier rule that does the same on all of its cells; nothing if its formula is
  /// an error whatever the cells hold.
  std::optional<std::size_t> cover = std::nullopt;
};

/// The plan for one sheet. Numbers of rules are those of the document.
struct SheetPlan {
  std::size_t sheet = 0;
  std::size_t ruleCount = 0;  ///< before
  std::vector<JoinedRules> joined;
  std::vector<DeadRule> dead;
  std::string untouchedReason;  ///< why the sheet stays as it is; empty if nothing prevents changes

  [[nodiscard]] std::size_t countRulesAfter() const noexcept;
};

struct TidyPlan {
  std::vector<SheetPlan> sheets;    ///< those with rules, in the document's order
  Workbook::PartContents contents;  ///< new bytes of the sheets that change
  /// The file has a digital signature, and something changes, so that the signature does not hold
  /// for the new file.
  bool breaksSignature = false;

  [[nodiscard]] bool changesNothing() const noexcept { return contents.empty(); }
};

/// Finds out which rules of a file can be put together or dropped. The document must have been
/// loaded from the file with these options.
///
/// Only the elements of conditional formats in the parts of sheets change. Throws LoadError if the
/// file is damaged, and what the budget throws. Memory: the unpacked parts of the sheets that
/// change, and of the one that is looked at.
[[nodiscard]] TidyPlan planTidy(std::filesystem::path const& file,
                                Workbook::Document const& document,
                                Workbook::LoadOptions const& options);

}  // namespace Zorv::Analysis
