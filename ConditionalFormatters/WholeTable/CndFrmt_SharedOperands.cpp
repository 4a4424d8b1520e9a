#include "ConditionalFormatters/WholeTable/CndFrmt_SharedOperands.h"

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

}  // namespace

SharedOperands::SharedOperands(ValueContextProvider const& provider, DOM::Table const& table,
                               ConditionalFormatRefs const& formatRefs) {
  boost::unordered_map<RangeList, RangeOperands*, RangeListHash, RangeListEqual> byRanges;
  for (FormatIndex format = 0; format < formatRefs.size(); ++format) {
    auto const& [ranges, record] = formatRefs[format];
    OperandNeeds const needs = findOperandNeeds(record.get().getOperator());
    if (needs.isEmpty()) {
      continue;
    }
    RangeOperands*& operands = byRanges[std::cref(ranges)];
    if (operands == nullptr) {
      operands = &_operands.emplace_back(provider, table, ranges);
    }
    operands->addNeeds(needs);
    _byFormat.resize(formatRefs.size());
    _byFormat[format] = operands;
  }
}

void SharedOperands::forget() noexcept {
  for (RangeOperands& operands : _operands) {
    operands.forget();
  }
}

}  // namespace Zorv::ConditionalFormatters
