#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace Zorv::ConditionalFormatters {

namespace {

[[noreturn]] void throwNoSuchFormat(std::size_t format, std::size_t count) {
  std::string message = "there is no conditional format with the index ";
  message += std::to_string(format);
  message += "; the table has ";
  message += std::to_string(count);
  throw std::out_of_range(message);
}

/// None if every format is asked for each cell.
std::vector<VerdictScope> findVerdictScopes(ConditionalFormatRefs const& formatRefs) {
  std::vector<VerdictScope> scopes;
  for (FormatIndex format = 0; format < formatRefs.size(); ++format) {
    VerdictScope const scope = findVerdictScope(formatRefs[format].second);
    if (scope != VerdictScope::Cell) {
      scopes.resize(formatRefs.size(), VerdictScope::Cell);
      scopes[format] = scope;
    }
  }
  return scopes;
}

}  // namespace

PreparedTable::PreparedTable(ValueContextProvider const& provider, DOM::Table const& table,
                             ConditionalFormatRefs const& formatRefs, DOM::Styles const& styles,
                             DOM::SharedObjectFactory const& sharedObjectFactory)
    : _provider(provider),
      _table(table),
      _formatRefs(formatRefs),
      _rangeIndex(formatRefs),
      _sequences(formatRefs, styles, sharedObjectFactory),
      _operands(provider, table, formatRefs),
      _scopes(findVerdictScopes(formatRefs)),
      _conditions(formatRefs.size()),
      _pointIndexes(formatRefs.size()),
      _lookups(std::make_unique<Formulas::LookupCache>()) {}

FormatIndex PreparedTable::checkFormat(std::size_t format) const {
  if (format >= _conditions.size()) {
    throwNoSuchFormat(format, _conditions.size());
  }
  return static_cast<FormatIndex>(format);
}

bool PreparedTable::liesInRanges(FormatIndex format, CellIndex cell) const {
  auto const& index = _pointIndexes[format].getOrCreate(
      [&] { return std::make_unique<PointIndex const>(_formatRefs[format].first); });
  return index.contains(cell.getRow().get(), cell.getColumn().get());
}

void PreparedTable::takeOver(PreparedTable& before, DocumentMoves const& moves) {
  _lookups = std::move(before._lookups);
  _lookups->follow(_operands.getAreas());
  _operands.takeOver(before._operands, moves);
}

OperandChanges PreparedTable::valuesChanged(DOM::Table const& table,
                                            std::span<TableRange const> areas,
                                            std::span<TableRange const> moved) {
  try {
    _lookups->valuesChanged(table, areas);
    _lookups->valuesChanged(table, moved);
    OperandChanges changes = _operands.valuesChanged(table, areas);
    for (FormatIndex const format : changes.touched) {
      _conditions[format].reset();
    }
    return changes;
  } catch (...) {
    for (auto& condition : _conditions) {
      condition.reset();
    }
    throw;
  }
}

std::vector<TableRange> PreparedTable::listRanges() const {
  std::vector<TableRange> ranges;
  for (ConditionalFormatRef const& formatRef : _formatRefs) {
    ranges.insert(ranges.end(), formatRef.first.begin(), formatRef.first.end());
  }
  return ranges;
}

}  // namespace Zorv::ConditionalFormatters
