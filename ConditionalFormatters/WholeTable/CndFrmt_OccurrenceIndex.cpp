#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceIndex.h"

#include <algorithm>
#include <functional>
#include <utility>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceBlock.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "Utils/WorkBudget.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// Calls `visit(cellInfo, value)` for the cells of the ranges in their order.
template <class Visit>
void visitValues(RangeOperands const& operands, PassResources const& resources,
                 Visit const& visit) {
  StepCounter steps(resources.budget);
  for (TableRange const& range : operands.getRanges()) {
    auto const [begin, end] = operands.getTable().getRangeIterators(range);
    for (auto cell = begin; cell != end; ++cell) {
      steps.count();
      DOM::CellInfo const cellInfo = cell.getCellInfo();
      visit(cellInfo, operands.getProvider().getCellValue(cellInfo));
    }
  }
}

FormulaModel::ValueKey occurrenceKeyOf(FormulaValue const& value) {
  return FormulaModel::makeValueKey(value, std::hash<std::string>());
}

std::string_view textOf(FormulaValue const& value) noexcept {
  auto const* const string = boost::get<FormulaModel::FormulaString>(&value);
  return string == nullptr ? std::string_view() : string->value;
}

}  // namespace

OccurrenceOperand countOccurrences(RangeOperands const& operands, FormulaValue const& value,
                                   PassResources const& resources) {
  FormulaModel::FormulaValuesComarator<std::equal_to> const isEqual;
  OccurrenceOperand operand;
  visitValues(operands, resources, [&](DOM::CellInfo const& cellInfo, FormulaValue const& other) {
    if (isEqual(other, value)) {
      operand.first = operand.count == 0 ? cellInfo.getCellIndex() : operand.first;
      ++operand.count;
    }
  });
  return operand;
}

OccurrenceIndex::OccurrenceIndex(RangeOperands const& operands, PassResources const& resources) {
  visitValues(operands, resources, [&](DOM::CellInfo const& cellInfo, FormulaValue const& value) {
    if (isComparable(value) && operands.isRepeated(cellInfo.getCellIndex(), resources)) {
      _entries.push_back(
          {occurrenceKeyOf(value), std::string(textOf(value)), {1, cellInfo.getCellIndex()}});
    }
  });
  // Stable: the first of equal entries is that of the first cell.
  std::ranges::stable_sort(_entries,
                           [](Entry const& a, Entry const& b) { return isLess(a, b.key, b.text); });
  joinEqual();
}

void OccurrenceIndex::joinEqual() {
  std::size_t count = 0;
  for (Entry& entry : _entries) {
    if (count > 0 && !isLess(_entries[count - 1], entry.key, entry.text)) {
      ++_entries[count - 1].operand.count;
    } else if (&_entries[count++] != &entry) {
      _entries[count - 1] = std::move(entry);
    }
  }
  _entries.resize(count);
  _entries.shrink_to_fit();
}

bool OccurrenceIndex::isLess(Entry const& entry, FormulaModel::ValueKey key,
                             std::string_view text) noexcept {
  return entry.key != key ? entry.key < key : entry.text < text;
}

OccurrenceOperand const* OccurrenceIndex::find(FormulaValue const& value) const {
  auto const key = occurrenceKeyOf(value);
  auto const text = textOf(value);
  auto const found =
      std::partition_point(_entries.begin(), _entries.end(),
                           [&](Entry const& entry) { return isLess(entry, key, text); });
  bool const isFound = found != _entries.end() && found->key == key && found->text == text;
  return isFound ? &found->operand : nullptr;
}

}  // namespace Zorv::ConditionalFormatters
