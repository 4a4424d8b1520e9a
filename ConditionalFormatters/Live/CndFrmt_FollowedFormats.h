#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"
#include "ConditionalFormatters/Live/CndFrmt_AreaLog.h"
#include "ConditionalFormatters/Live/CndFrmt_FormatDependencies.h"
#include "ConditionalFormatters/Live/CndFrmt_LiveSources.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_Lazy.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_SharedOperands.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// The formats of a table at one state of their list and ranges: prepared, and with what each of
/// them depends on.
///
/// Const members may run concurrently; the others need exclusive access. The host's formats are
/// read until they change, and not any more after that.
class FollowedFormats {
public:
  /// One entry for each format; none for a format without ranges, which holds nowhere.
  using AllDependencies = std::vector<std::optional<FormatDependencies>>;

  explicit FollowedFormats(LiveSources const& sources);

  [[nodiscard]] PreparedTable const& getPrepared() const noexcept { return _prepared; }
  [[nodiscard]] ConditionalFormatRefs const& getRefs() const noexcept { return _refs; }
  [[nodiscard]] std::vector<TableRange> const& getRanges(FormatIndex format) const noexcept {
    return _refs[format].first;
  }

  /// Found at the first call. Throws what the provider throws, and then is found at the next one.
  [[nodiscard]] AllDependencies const& getOrFindDependencies() const;

  /// Takes values over that changed: appends the areas outside of which no cell looks different,
  /// and forgets what was prepared from the old values.
  void followValues(std::span<ChangedCells const> changes, ReachedAreas& reached);

  /// Takes over from the state before rows and columns changed, the table's own ones in `zones`:
  /// appends the areas outside of which no cell looks different. Requires the same formats.
  void followLines(FollowedFormats const& before, std::span<TableRange const> zones,
                   std::vector<TableRange>& areas) const;

  /// Takes over what follows edits from another state of the formats. `moves`: edits of lines that
  /// lie between the two. Other changes are to be told to followValues(). Throws what the provider
  /// throws.
  void takeOver(FollowedFormats& before, DocumentMoves const& moves);

  /// The same for the same formats, where lines of other tables were edited.
  void linesChanged(DocumentMoves const& moves) { _prepared.linesChanged(moves); }

  /// Works in advance on operands that follow values; see SharedOperands.
  bool prepareSome(std::chrono::microseconds budget);

  /// Appends the ranges of all formats.
  void appendRanges(std::vector<TableRange>& areas) const;

private:
  void learnAreas();
  void followOperands(OperandChanges const& changes, ReachedAreas& reached) const;
  void followFormat(FormatIndex format, FormatDependencies const& dependencies,
                    std::span<ChangedCells const> changes, ReachedAreas& reached);

  LiveSources _sources;
  ConditionalFormatRefs _refs;
  PreparedTable _prepared;  // borrows the list
  mutable std::recursive_mutex _finding;
  Lazy<AllDependencies> _dependencies;
  bool _knowsAreas = false;  ///< the areas of formulas are among what follows values
};

}  // namespace Zorv::ConditionalFormatters
