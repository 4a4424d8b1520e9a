#include "ConditionalFormatters/WholeTable/CndFrmt_SharedOperands.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>

#include <boost/container_hash/hash.hpp>
#include <boost/unordered_map.hpp>
#include <boost/variant/get.hpp>

#include "ConditionalFormatters/WholeTable/CndFrmt_OperandNeeds.h"
#include "DOM/ConditionalFormat.h"
#include "DOM/ConditionalFormatOperator.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// The ranges of a table by which operands are shared. Borrows the list.
struct SharedKey {
  DOM::Table const* table;
  std::vector<TableRange> const* ranges;

  friend bool operator==(SharedKey const& a, SharedKey const& b) noexcept {
    return a.table == b.table && *a.ranges == *b.ranges;
  }
  friend std::size_t hash_value(SharedKey const& key) noexcept {
    std::size_t hash = std::hash<DOM::Table const*>()(key.table);
    for (TableRange const& range : *key.ranges) {
      boost::hash_combine(hash, range.firstRow);
      boost::hash_combine(hash, range.firstColumn);
      boost::hash_combine(hash, range.endRow);
      boost::hash_combine(hash, range.endColumn);
    }
    return hash;
  }
};

SharedKey sharedKeyOf(RangeOperands const& operands) noexcept {
  return {&operands.getTable(), &operands.getRanges()};
}

/// True for an area that the formula engine does not just walk over.
bool isLarge(TableRange const& area) noexcept {
  constexpr std::uint64_t fewPositions = 64;
  return std::uint64_t{area.endRow - area.firstRow} * (area.endColumn - area.firstColumn) >
         fewPositions;
}

bool doMeet(std::vector<TableRange> const& ranges, std::span<TableRange const> areas) noexcept {
  return std::ranges::any_of(ranges, [&](TableRange const& range) {
    return std::ranges::any_of(
        areas, [&](TableRange const& area) { return !intersect(range, area).isEmpty(); });
  });
}

bool isNumber(boost::optional<FloatNumber> const& reference) noexcept {
  return reference && !std::isnan(reference->get());
}

}  // namespace

SharedOperands::SharedOperands(ValueContextProvider const& provider, DOM::Table const& table,
                               ConditionalFormatRefs const& formatRefs, std::size_t mostFollowed)
    : _provider(provider), _formatRefs(formatRefs), _mostFollowed(mostFollowed) {
  boost::unordered_map<SharedKey, Shared*> byRanges;
  for (FormatIndex format = 0; format < formatRefs.size(); ++format) {
    auto const& [ranges, record] = formatRefs[format];
    if (findOperandNeeds(record.get().getOperator()).isEmpty()) {
      continue;
    }
    Shared*& shared = byRanges[{&table, &ranges}];
    if (shared == nullptr) {
      shared = &_shared.emplace_back(provider, table, ranges);
    }
    shared->operands.addFormat(record.get().getOperator());
    shared->formats.push_back(format);
    _byFormat.resize(formatRefs.size());
    _byFormat[format] = &shared->operands;
  }
}

void SharedOperands::addAreas(std::span<FormulaArea const> areas) {
  boost::unordered_map<SharedKey, Shared*> byRanges;
  for (Shared& shared : _shared) {
    byRanges.emplace(sharedKeyOf(shared.operands), &shared);
  }
  for (FormulaArea const& area : areas) {
    if (!isLarge(area.range)) {
      continue;
    }
    std::vector<TableRange> const ranges{area.range};
    auto const known = byRanges.find({area.table, &ranges});
    Shared* const shared =
        known == byRanges.end() ? &_shared.emplace_back(_provider, area) : known->second;
    byRanges.emplace(sharedKeyOf(shared->operands), shared);
    shared->operands.addAspects(area.aspects);
    _areas.add(area, shared->operands);
  }
}

/// The ranges of formats move with the lines, those of formulas where the host moves them.
void SharedOperands::takeOver(SharedOperands& others, DocumentMoves const& moves) {
  std::deque<std::vector<TableRange>> lists;
  boost::unordered_map<SharedKey, Shared*> byMovedRanges;
  boost::unordered_map<SharedKey, Shared*> byRanges;
  for (Shared& shared : others._shared) {
    byRanges.emplace(sharedKeyOf(shared.operands), &shared);
    DOM::Table const& table = shared.operands.getTable();
    if (SheetMoves const* const ofTable = moves.find(table)) {
      auto& moved = lists.emplace_back(shared.operands.getRanges());
      std::ranges::transform(moved, moved.begin(),
                             [&](TableRange const& range) { return ofTable->move(range); });
      byMovedRanges.emplace(SharedKey{&table, &moved}, &shared);
    }
  }
  for (auto const* const known : {&byMovedRanges, &byRanges}) {
    for (Shared& shared : _shared) {
      auto const found = known->find(sharedKeyOf(shared.operands));
      if (found != known->end() && !shared.operands.isFollowing()) {
        shared.operands.takeOver(found->second->operands, moves.find(shared.operands.getTable()));
      }
    }
  }
}

OperandChanges SharedOperands::valuesChanged(DOM::Table const& table,
                                             std::span<TableRange const> areas) {
  try {
    OperandChanges changes;
    for (Shared& shared : _shared) {
      if (&shared.operands.getTable() == &table && doMeet(shared.operands.getRanges(), areas)) {
        changes.touched.insert(changes.touched.end(), shared.formats.begin(), shared.formats.end());
        follow(shared, areas, changes);
      }
    }
    return changes;
  } catch (...) {
    forget();
    throw;
  }
}

void SharedOperands::linesChanged(DocumentMoves const& moves) {
  try {
    for (Shared& shared : _shared) {
      if (SheetMoves const* const ofTable = moves.find(shared.operands.getTable())) {
        shared.operands.linesChanged(*ofTable);
      }
    }
  } catch (...) {
    forget();
    throw;
  }
}

void SharedOperands::forget() noexcept {
  for (Shared& shared : _shared) {
    shared.operands.forget();
  }
}

void SharedOperands::follow(Shared& shared, std::span<TableRange const> areas,
                            OperandChanges& changes) {
  auto const before = listFollowed(shared);
  auto const change = shared.operands.valuesChanged(areas);
  if (before.empty() || !change.isFollowed) {
    changes.moved.insert(changes.moved.end(), shared.formats.begin(), shared.formats.end());
    return;
  }
  auto const after = listFollowed(shared);
  for (std::size_t index = 0; index < shared.formats.size(); ++index) {
    addMove(shared.formats[index], before[index], after[index], changes);
  }
  changes.cells.insert(changes.cells.end(), change.flipped.begin(), change.flipped.end());
}

/// Cells whose numbers lie on the same side of both references are judged alike.
void SharedOperands::addMove(FormatIndex format, Reference const& before, Reference const& after,
                             OperandChanges& changes) {
  if (isNumber(before) && isNumber(after)) {
    if (*before != *after) {
      changes.shifted.push_back(
          {format, std::min(before->get(), after->get()), std::max(before->get(), after->get())});
    }
  } else if (isNumber(before) || isNumber(after) || before.has_value() != after.has_value()) {
    changes.moved.push_back(format);
  }
}

bool SharedOperands::prepareSome(std::chrono::microseconds budget) {
  auto const end = FollowedOperands::Clock::now() + budget;
  std::size_t followed = 0;
  for (Shared& shared : _shared) {
    bool const hasMore = shared.operands.prepareUntil(end);
    std::size_t const count = shared.operands.countFollowed();
    if (count > _mostFollowed - followed) {
      shared.operands.stopFollowing();
      continue;
    }
    if (hasMore) {
      return true;
    }
    followed += count;
  }
  return false;
}

std::vector<SharedOperands::Reference> SharedOperands::listFollowed(Shared const& shared) const {
  std::vector<Reference> references;
  auto const* const followed = shared.operands.findFollowed();
  if (followed == nullptr) {
    return references;
  }
  for (FormatIndex const format : shared.formats) {
    auto const& record = _formatRefs[format].second.get().getOperator();
    Reference reference;
    if (auto const* const ranked = boost::get<DOM::TopBottomConditionalFormatOperator>(&record)) {
      reference = followed->getThreshold(*ranked).threshold;
    } else if (boost::get<DOM::AboveAverageConditionalFormatOperator>(&record) != nullptr) {
      reference = followed->getMean().mean;
    }
    references.push_back(reference);
  }
  return references;
}

}  // namespace Zorv::ConditionalFormatters
