#pragma once

#include <cstddef>
#include <mutex>
#include <optional>
#include <vector>

#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"
#include "ConditionalFormatters/Parallel/CndFrmt_PassResources.h"
#include "Formulas/LookupCache.h"
#include "Utils/CellIndex.h"
#include "visuals/Draw/Bounds.h"
#include "visuals/Prepare/FormulaEvaluator.h"
#include "visuals/VisualSources.h"

namespace Zorv::Visuals {

/// The state that all passes over a table share. Threads: may be used from several threads.
class PreparedVisuals {
public:
  /// Borrows the sources.
  explicit PreparedVisuals(VisualSources const& sources);

  [[nodiscard]] VisualSources const& getSources() const noexcept { return _sources; }
  [[nodiscard]] std::size_t countFormats() const noexcept { return _placed.size(); }
  [[nodiscard]] VisualFormat const& getFormat(std::size_t format) const noexcept {
    return *_sources.formats[format];
  }
  [[nodiscard]] ConditionalFormatters::RangeIndex const& getRangeIndex() const noexcept {
    return _rangeIndex;
  }
  [[nodiscard]] CellIndex getBaseCell(std::size_t format) const noexcept {
    return _placed[format].baseCell;
  }
  [[nodiscard]] Formulas::LookupCache& getLookups() const noexcept { return _lookups; }

  /// The thresholds of a format, found at the first call; each time if they depend on the moment.
  /// Throws what findBounds() throws.
  [[nodiscard]] Bounds findBounds(std::size_t format, FormulaEvaluator& formulas,
                                  ConditionalFormatters::PassResources const& resources) const;

  /// True if a conditional format contributes a fill where it holds.
  [[nodiscard]] bool setsFill(std::size_t conditionalFormat) const noexcept {
    return _setsFill[conditionalFormat];
  }
  /// True if a conditional format stops the evaluation where it holds.
  [[nodiscard]] bool stops(std::size_t conditionalFormat) const noexcept {
    return _stops[conditionalFormat];
  }

private:
  /// A format at the current positions of its ranges.
  struct Placed {
    std::vector<TableRange> ranges;
    CellIndex baseCell;
    bool dependsOnMoment;
  };

  [[nodiscard]] static std::vector<Placed> place(VisualSources const& sources);
  [[nodiscard]] static std::vector<ConditionalFormatters::FormatRange> listRanges(
      std::vector<Placed> const& placed);

  VisualSources _sources;
  std::vector<Placed> _placed;  ///< by format
  ConditionalFormatters::RangeIndex _rangeIndex;
  std::vector<bool> _setsFill;  ///< by conditional format
  std::vector<bool> _stops;     ///< by conditional format
  mutable Formulas::LookupCache _lookups;
  mutable std::mutex _mutex;                           ///< guards what follows
  mutable std::vector<std::optional<Bounds>> _bounds;  ///< by format
};

}  // namespace Zorv::Visuals
