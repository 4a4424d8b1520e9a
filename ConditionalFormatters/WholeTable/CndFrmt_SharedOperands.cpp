#include "ConditionalFormatters/WholeTable/CndFrmt_SharedOperands.h"

#include <algorithm>
#include <cstddef>
#include <functional>

#include <boost/container_hash/hash.hpp>
#include <boost/unordered_map.hpp>

#include "ConditionalFormatters/WholeTable/CndFrmt_OperandNeeds.h"
#include "DOM/ConditionalFormat.h"

namespace Zorv::ConditionalFormatters {

namespace {

using RangeList = std::reference_wrapper<std::vector<TableRange> const>;

struct RangeListHash {
  std::size_t operator()(RangeList const& ranges) const noexcept {
    std::size_t hash = 0;
    for (TableRange const& range : ranges.get()) {
      boost::hash_combine(hash, range.firstRow);
      boost::hash_combine(hash, range.firstColumn);
      boost::hash_combine(hash, range.endRow);
      boost::hash_combine(hash, range.endColumn);
    }
    return hash;
  }
};

struct RangeListEqual {
  bool operator()(RangeList const& a, RangeList const& b) const noexcept {
    return a.get() == b.get();
  }
};

bool doMeet(std::vector<TableRange> const& ranges, std::span<TableRange const> areas) noexcept {
  return std::ranges::any_of(ranges, [&](TableRange const& range) {
    return std::ranges::any_of(
        areas, [&](TableRange const& area) { return !intersect(range, area).isEmpty(); });
  });
}

}  // namespace

SharedOperands::SharedOperands(ValueContextProvider const& provider, DOM::Table const& table,
                               ConditionalFormatRefs const& formatRefs) {
  boost::unordered_map<RangeList, Shared*, RangeListHash, RangeListEqual> byRanges;
  for (FormatIndex format = 0; format < formatRefs.size(); ++format) {
    auto const& [ranges, record] = formatRefs[format];
    OperandNeeds const needs = findOperandNeeds(record.get().getOperator());
    if (needs.isEmpty()) {
      continue;
    }
    Shared*& shared = byRanges[std::cref(ranges)];
    if (shared == nullptr) {
      shared = &_shared.emplace_back(provider, table, ranges);
    }
    shared->operands.addNeeds(needs);
    shared->formats.push_back(format);
    _byFormat.resize(formatRefs.size());
    _byFormat[format] = &shared->operands;
  }
}

OperandChanges SharedOperands::valuesChanged(std::span<TableRange const> areas) {
  OperandChanges changes;
  for (Shared& shared : _shared) {
    if (doMeet(shared.operands.getRanges(), areas)) {
      shared.operands.forget();
      changes.formats.insert(changes.formats.end(), shared.formats.begin(), shared.formats.end());
    }
  }
  return changes;
}

}  // namespace Zorv::ConditionalFormatters
