#include "ConditionalFormatters/Live/CndFrmt_FollowedFormats.h"

#include <algorithm>
#include <memory>

#include "ConditionalFormatters/Formats/CndFrmt_FormatRefs.h"
#include "ConditionalFormatters/Formats/CndFrmt_FormulaBaseCell.h"
#include "ConditionalFormatters/Live/CndFrmt_FewAreas.h"
#include "ConditionalFormatters/Live/CndFrmt_FormulaFollower.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// Appends what ranges and zones share. True if there is something.
bool appendShared(std::vector<TableRange> const& ranges, std::span<TableRange const> zones,
                  std::vector<TableRange>& areas) {
  bool isShared = false;
  for (TableRange const& range : ranges) {
    for (TableRange const& zone : zones) {
      TableRange const common = intersect(range, zone);
      if (!common.isEmpty()) {
        areas.push_back(common);
        isShared = true;
      }
    }
  }
  return isShared;
}

/// True if a cell continues an area of one column.
bool isRightBelow(TableRange const& area, unsigned long row, unsigned long column) noexcept {
  return area.endRow == row && area.firstColumn == column && area.endColumn == column + 1;
}

}  // namespace

FollowedFormats::FollowedFormats(LiveSources const& sources)
    : _sources(sources),
      _refs(makeConditionalFormatRefs(sources.table)),
      _prepared(sources.provider, sources.table, _refs, sources.styles,
                sources.sharedObjectFactory) {}

FollowedFormats::AllDependencies const& FollowedFormats::getOrFindDependencies() const {
  return _dependencies.getOrCreate(_finding, [&] {
    auto dependencies = std::make_unique<AllDependencies>(_refs.size());
    for (FormatIndex format = 0; format < _refs.size(); ++format) {
      if (!getRanges(format).empty()) {
        (*dependencies)[format].emplace(_refs[format], _sources.table, _sources.provider);
      }
    }
    return dependencies;
  });
}

void FollowedFormats::followValues(std::span<ChangedCells const> changes, ReachedAreas& reached) {
  if (changes.empty()) {
    return;
  }
  AllDependencies const& dependencies = getOrFindDependencies();
  for (ChangedCells const& changed : changes) {
    if (changed.table != nullptr) {
      followOperands(_prepared.valuesChanged(*changed.table, changed.areas, changed.moved),
                     reached);
    }
  }
  for (FormatIndex format = 0; format < dependencies.size(); ++format) {
    if (dependencies[format]) {
      followFormat(format, *dependencies[format], changes, reached);
    }
  }
}

void FollowedFormats::followFormat(FormatIndex format, FormatDependencies const& dependencies,
                                   std::span<ChangedCells const> changes, ReachedAreas& reached) {
  Reach reach;
  dependencies.reach(changes, getRanges(format), reach);
  appendAll(reach.areas, reached.areas);
  if (!reach.fixed.empty() &&
      FormulaFollower(_sources, _prepared, changes).follow(format, dependencies, reach, reached)) {
    return;
  }
  // The cells for which a formula has given up may be those that changed.
  bool const mayRecover = !reach.areas.empty() && _prepared.hasGivenUp(format);
  if (!reach.fixed.empty() || mayRecover) {
    appendAll(getRanges(format), reached.areas);
  }
  if (reach.operandsChange || mayRecover) {
    _prepared.forgetCondition(format);
  }
}

void FollowedFormats::takeOver(FollowedFormats& before, DocumentMoves const& moves) {
  if (before._knowsAreas) {
    learnAreas();
  }
  _prepared.takeOver(before._prepared, moves);
}

void FollowedFormats::learnAreas() {
  std::vector<FormulaArea> areas;
  for (auto const& dependencies : getOrFindDependencies()) {
    if (dependencies) {
      dependencies->appendAreas(areas);
    }
  }
  _prepared.addAreas(areas);
  _knowsAreas = true;
}

bool FollowedFormats::prepareSome(std::chrono::microseconds budget) {
  if (!_knowsAreas) {
    learnAreas();
  }
  return _prepared.prepareSome(budget);
}

void FollowedFormats::followOperands(OperandChanges const& changes, ReachedAreas& reached) const {
  for (FormatIndex const format : changes.moved) {
    appendAll(getRanges(format), reached.areas);
  }
  for (auto const& shifted : changes.shifted) {
    for (TableRange const& range : getRanges(shifted.format)) {
      NumberArea const area{range, shifted.least, shifted.most, false};
      // Formats with one reference and the same ranges follow one another.
      if (reached.numbers.empty() || reached.numbers.back() != area) {
        reached.numbers.push_back(area);
      }
    }
  }
  for (CellIndex const cell : changes.cells) {
    unsigned long const row = cell.getRow().get();
    unsigned long const column = cell.getColumn().get();
    if (!reached.areas.empty() && isRightBelow(reached.areas.back(), row, column)) {
      ++reached.areas.back().endRow;
    } else {
      reached.areas.push_back({row, column, row + 1, column + 1});
    }
  }
}

void FollowedFormats::followLines(FollowedFormats const& before, std::span<TableRange const> zones,
                                  std::vector<TableRange>& areas) const {
  AllDependencies const& dependencies = getOrFindDependencies();
  for (FormatIndex format = 0; format < dependencies.size(); ++format) {
    bool const hadCells = appendShared(before.getRanges(format), zones, areas);
    bool const hasCells = appendShared(getRanges(format), zones, areas);
    if (before.getRanges(format).empty() || getRanges(format).empty()) {
      continue;
    }
    bool const isMoved =
        formulaBaseCell(before.getRanges(format)) != formulaBaseCell(getRanges(format));
    if (isMoved || (dependencies[format]->areOnRanges() && (hadCells || hasCells))) {
      appendAll(getRanges(format), areas);
    }
  }
}

void FollowedFormats::appendRanges(std::vector<TableRange>& areas) const {
  for (ConditionalFormatRef const& formatRef : _refs) {
    appendAll(formatRef.first, areas);
  }
}

}  // namespace Zorv::ConditionalFormatters
