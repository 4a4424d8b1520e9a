#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"

#include <algorithm>
#include <iterator>

#include <boost/optional.hpp>

#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/Formats/CndFrmt_FormatRefs.h"
#include "ConditionalFormatters/Formats/CndFrmt_FormatWalk.h"
#include "ConditionalFormatters/Formats/CndFrmt_PointIndex.h"
#include "ConditionalFormatters/Formats/CndFrmt_StyleFlattening.h"
#include "ConditionalFormatters/Live/CndFrmt_LiveTable.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"
#include "DOM/CellInfo.h"
#include "DOM/ConditionalFormat.h"
#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "Utils/PtrUtils.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// Where a table's entry stands in a cache sorted by the tables' identities, or would stand.
template <class Cache>
auto lowerBound(Cache& cache, UUID const& tableUUID) {
  return std::lower_bound(cache.begin(), cache.end(), tableUUID,
                          [](auto const& entry, UUID const& uuid) { return entry.first < uuid; });
}

/// The remembered style of a cell, which may be a null pointer, or null where none is remembered.
template <class Cache>
DOM::SharedCellStylePtr const* findStyle(Cache const& cache, DOM::CellID const& cellID) {
  auto const entry = lowerBound(cache, cellID.tableUUID);
  if (entry == cache.end() || entry->first != cellID.tableUUID) {
    return nullptr;
  }
  auto const style = entry->second.find({cellID.rowID, cellID.columnID});
  return style == entry->second.end() ? nullptr : &style->second;
}

/// Remembers the style of a cell in place of what may be remembered for it.
template <class Cache>
DOM::SharedCellStylePtr const& storeStyle(Cache& cache, DOM::CellID const& cellID,
                                          DOM::SharedCellStylePtr style) {
  auto entry = lowerBound(cache, cellID.tableUUID);
  if (entry == cache.end() || entry->first != cellID.tableUUID) {
    entry = cache.emplace(entry, cellID.tableUUID, typename Cache::value_type::second_type());
  }
  DOM::SharedCellStylePtr& stored = entry->second[{cellID.rowID, cellID.columnID}];
  stored = std::move(style);
  return stored;
}

/// Forgets the styles of cells that lie in some areas of their table.
template <class Styles>
void forgetStyles(Styles& styles, DOM::Table const& table, std::vector<TableRange> const& areas) {
  PointIndex const index(areas);
  DOM::AxisIds const& rows = table.getRowIds();
  DOM::AxisIds const& columns = table.getColumnIds();
  for (auto style = styles.begin(); style != styles.end();) {
    auto const& [row, column] = style->first;
    bool const isInside = index.contains(rows.beginOf(row.get()), columns.beginOf(column.get()));
    style = isInside ? styles.erase(style) : std::next(style);
  }
}

}  // namespace

ConditionalFormattingPropsCalculator::ConditionalFormattingPropsCalculator(
    std::unique_ptr<ValueContextProvider> provider)
    : _valueContextProvider(std::move(provider)) {}

void ConditionalFormattingPropsCalculator::clearCellStylesCache() const {
  std::lock_guard const lock(_cellStylesMutex);
  _cellStylesCache.clear();
}

void ConditionalFormattingPropsCalculator::forgetCells(DOM::Table const& table,
                                                       std::vector<TableRange> const& areas) const {
  std::lock_guard const lock(_cellStylesMutex);
  auto const entry = lowerBound(_cellStylesCache, table.getUUID());
  if (entry != _cellStylesCache.end() && entry->first == table.getUUID()) {
    forgetStyles(entry->second, table, areas);
  }
}

void ConditionalFormattingPropsCalculator::clearTablesRangesCache() const {
  std::lock_guard const lock(_tablesRangesMutex);
  _tablesRangesCache.clear();
}

ConditionalFormatRefs const& ConditionalFormattingPropsCalculator::getConditionalFormatRefs(
    DOM::Table const& table) const {
  std::lock_guard const lock(_tablesRangesMutex);
  auto const found = _tablesRangesCache.find(table.getID());
  if (found != _tablesRangesCache.end()) {
    return found->second;
  }
  auto refs = makeConditionalFormatRefs(table);
  return _tablesRangesCache.emplace(table.getID(), std::move(refs)).first->second;
}

DOM::SharedCellStylePtr ConditionalFormattingPropsCalculator::resolve(
    DOM::Styles const& styles, DOM::CellInfo const& cellInfo) const {
  DOM::Table const& table = cellInfo.getTable();
  OperatorsFactory const factory(PtrUtils::derefHeld(_valueContextProvider), table);

  ConditionalFormatRefs const& formatRefs = getConditionalFormatRefs(table);
  boost::optional<DOM::CellStyle> accumulated;
  walkFormats(
      formatRefs, findFormatsOn(formatRefs, cellInfo),
      [&](FormatIndex index) {
        return [condition = factory.create(formatRefs[index])](FormulaValueData const& data) {
          return (*condition)(data);
        };
      },
      [&] {
        CellIndex const cellIndex = cellInfo.getCellIndex();
        auto const& provider = PtrUtils::derefHeld(_valueContextProvider);
        return FormulaValueData{provider.getCellValue(cellInfo), cellIndex};
      },
      [&](FormatIndex index) {
        DOM::ConditionalFormat const& format = formatRefs[index].second;
        mergeUnder(accumulated, flattenNamedStyle(styles, format.getStyleUUID()));
      });
  return accumulated ? _sharedObjectFactory.create(std::move(*accumulated)) : nullptr;
}

DOM::SharedCellStylePtr ConditionalFormattingPropsCalculator::getConditionalFormatCellStyle(
    DOM::Styles const& styles, DOM::CellInfo const& cellInfo) const {
  if (cellInfo.getTable().getLiveConditionalFormats().empty()) {
    return nullptr;
  }
  std::lock_guard const lock(_cellStylesMutex);
  if (cellInfo.getCell() != nullptr) {
    if (auto const* style = findStyle(_cellStylesCache, cellInfo.getCellID())) {
      return *style;
    }
  }
  auto style = resolve(styles, cellInfo);
  if (cellInfo.getCell() == nullptr) {
    return style;
  }
  // The place in the cache is looked up anew: the provider may have asked about cells meanwhile.
  return storeStyle(_cellStylesCache, cellInfo.getCellID(), std::move(style));
}

LiveResolver ConditionalFormattingPropsCalculator::follow(DOM::Styles const& styles,
                                                          DOM::Table const& table) const {
  return LiveResolver(std::make_unique<LiveTable>(LiveSources{
      PtrUtils::derefHeld(_valueContextProvider), table, styles, _sharedObjectFactory}));
}

TableResolver ConditionalFormattingPropsCalculator::prepare(DOM::Styles const& styles,
                                                            DOM::Table const& table) const {
  auto const& provider = PtrUtils::derefHeld(_valueContextProvider);
  return TableResolver(std::make_shared<PreparedTable const>(
      provider, table, getConditionalFormatRefs(table), styles, _sharedObjectFactory));
}

}  // namespace Zorv::ConditionalFormatters
