#pragma once

#include <memory>
#include <optional>
#include <random>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ChangeChecks.h"
#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/Live/CndFrmt_FollowedFormats.h"
#include "ConditionalFormatters/Live/CndFrmt_LiveSources.h"
#include "DOM/CellInfo.h"
#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// Compares cells with what plain operators say about them, to find changes that were not told.
class ChangeChecker {
public:
  ChangeChecker(LiveSources const& sources, ChangeChecks checks)
      : _sources(sources), _checks(std::move(checks)), _random(_checks.seed) {}

  /// Looks at cells after a change that reached some areas. False if something was not told; it has
  /// been reported.
  bool check(FollowedFormats const& formats, std::vector<TableRange> const& areas);

  /// Forgets the cells that were looked at, after a change of positions or formats.
  void forgetCells() noexcept { _noted.clear(); }

private:
  /// True or false, or none where the evaluation threw.
  using Verdict = std::optional<bool>;
  struct NotedCell {
    CellIndex cell;
    std::vector<std::pair<FormatIndex, Verdict>> verdicts;
  };
  class PlainOperators;

  void report(UntoldChange const& change);
  void checkFormats(FollowedFormats const& formats);
  void checkNoted(PlainOperators& operators, std::vector<TableRange> const& areas);
  void noteCells(FollowedFormats const& formats, PlainOperators& operators);
  void noteCell(FollowedFormats const& formats, PlainOperators& operators, CellIndex cell);
  /// A cell in the ranges of some format; none if there are no ranges.
  [[nodiscard]] std::optional<CellIndex> drawCell(FollowedFormats const& formats);

  LiveSources _sources;
  ChangeChecks _checks;
  std::mt19937 _random;
  std::vector<NotedCell> _noted;
  bool _isAllTold = true;
};

}  // namespace Zorv::ConditionalFormatters
