#pragma once

#include <span>
#include <vector>

#include "ConditionalFormatters/Live/CndFrmt_AreaLog.h"
#include "ConditionalFormatters/Live/CndFrmt_FormatDependencies.h"
#include "ConditionalFormatters/Live/CndFrmt_FormulaMoves.h"
#include "ConditionalFormatters/Live/CndFrmt_LiveSources.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// Finds the cells for which formulas may give another answer, where an edit changed what the
/// formulas ask of areas that follow edits: of `A1>AVERAGE($A:$A)` those between the old mean and
/// the new one, of `COUNTIF($A:$A,A1)>1` those with a value that is more or less often there.
///
/// For one edit. Borrows everything.
class FormulaFollower {
public:
  FormulaFollower(LiveSources const& sources, PreparedTable& prepared,
                  std::span<ChangedCells const> changes)
      : _sources(sources), _prepared(prepared), _changes(changes) {}

  /// Follows the condition of a format: appends the areas outside of which fixed references change
  /// no verdict, and prepares the condition anew. False, and nothing is done, if it cannot tell or
  /// had to walk over ranges. Throws what the host throws.
  [[nodiscard]] bool follow(FormatIndex format, FormatDependencies const& dependencies,
                            Reach const& reach, ReachedAreas& reached);

private:
  [[nodiscard]] bool isFollowed(FormulaArea const& area) const noexcept;
  /// Appends the areas that formulas reach through what is left of them to evaluate for each cell.
  /// False if that may be any cell.
  [[nodiscard]] bool appendReachOfRest(PreparedCondition const& condition,
                                       FormatDependencies const& dependencies,
                                       FormulaPlace const& place,
                                       std::vector<ClassArea>& areas) const;
  [[nodiscard]] bool appendCounted(Formulas::Dependencies::Reference const& reference,
                                   FormatDependencies const& dependencies,
                                   FormulaPlace const& place, std::vector<ClassArea>& areas) const;

  LiveSources const& _sources;
  PreparedTable& _prepared;
  std::span<ChangedCells const> _changes;
};

}  // namespace Zorv::ConditionalFormatters
