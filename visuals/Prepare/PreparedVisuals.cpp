#include "visuals/Prepare/PreparedVisuals.h"

#include <algorithm>
#include <map>

#include "ConditionalFormatters/CndFrmt_StyleHierarchy.h"
#include "DOM/CellStyle.h"
#include "DOM/ConditionalFormat.h"
#include "visuals/Prepare/BoundsOf.h"

namespace Zorv::Visuals {

namespace {

/// The top-left cell of the smallest rectangle around the ranges.
CellIndex findBaseCell(std::vector<TableRange> const& ranges) {
  unsigned long row = 0;
  unsigned long column = 0;
  if (!ranges.empty()) {
    row = std::ranges::min(ranges, {}, &TableRange::firstRow).firstRow;
    column = std::ranges::min(ranges, {}, &TableRange::firstColumn).firstColumn;
  }
  return {RowIndex(row), ColumnIndex(column)};
}

bool hasFill(DOM::Styles const& styles, UUID const& style) {
  DOM::CellStyle named;
  named.setParentUUID(style);
  auto const flat =
      DOM::getOverridenAllPropsWithParentStyles(styles, named, DOM::TrackChangesViewMode::Final);
  auto const& props = flat.getCellProps();
  return props && (props->fillPattern || props->fillColour || props->fillPatternColour ||
                   props->fillGradient);
}

std::vector<bool> findFills(VisualSources const& sources) {
  std::map<UUID, bool> byStyle;
  std::vector<bool> fills;
  for (auto const& [ranges, format] : sources.conditionalFormats) {
    UUID const& style = format.get().getStyleUUID();
    auto found = byStyle.find(style);
    if (found == byStyle.end()) {
      found = byStyle.emplace(style, hasFill(sources.styles, style)).first;
    }
    fills.push_back(found->second);
  }
  return fills;
}

std::vector<bool> findStops(VisualSources const& sources) {
  std::vector<bool> stops;
  for (auto const& [ranges, format] : sources.conditionalFormats) {
    stops.push_back(format.get().getStopCalculateConditions());
  }
  return stops;
}

}  // namespace

PreparedVisuals::PreparedVisuals(VisualSources const& sources)
    : _sources(sources),
      _placed(place(sources)),
      _rangeIndex(listRanges(_placed)),
      _setsFill(findFills(sources)),
      _stops(findStops(sources)),
      _bounds(_placed.size()) {}

std::vector<PreparedVisuals::Placed> PreparedVisuals::place(VisualSources const& sources) {
  std::vector<Placed> placed;
  placed.reserve(sources.formats.size());
  for (auto const& format : sources.formats) {
    auto ranges = DOM::convertToTableRanges(sources.table, format->ranges);
    CellIndex const baseCell = findBaseCell(ranges);
    placed.push_back({std::move(ranges), baseCell, Visuals::dependsOnMoment(format->kind)});
  }
  return placed;
}

std::vector<ConditionalFormatters::FormatRange> PreparedVisuals::listRanges(
    std::vector<Placed> const& placed) {
  std::vector<ConditionalFormatters::FormatRange> ranges;
  for (std::size_t format = 0; format < placed.size(); ++format) {
    for (TableRange const& range : placed[format].ranges) {
      ranges.push_back({range, static_cast<ConditionalFormatters::FormatIndex>(format)});
    }
  }
  return ranges;
}

Bounds PreparedVisuals::findBounds(std::size_t format, FormulaEvaluator& formulas,
                                   ConditionalFormatters::PassResources const& resources) const {
  Placed const& placed = _placed[format];
  auto const find = [&] {
    return Visuals::findBounds(getFormat(format).kind,
                               {_sources.table, _sources.provider, placed.ranges, resources},
                               placed.baseCell, formulas);
  };
  if (placed.dependsOnMoment) {
    return find();
  }
  {
    std::lock_guard const lock(_mutex);
    if (_bounds[format]) {
      return *_bounds[format];
    }
  }
  // The provider may ask back, so that no lock is held. Threads that come together find the same.
  Bounds const bounds = find();
  std::lock_guard const lock(_mutex);
  _bounds[format] = bounds;
  return bounds;
}

}  // namespace Zorv::Visuals
