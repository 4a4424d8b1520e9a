#include "Formulas/Lookups/LookupStore.h"

#include <algorithm>

#include "DOM/Table.h"

namespace Zorv::Formulas {

namespace {

// The areas that the index of a key knows.

std::span<TableArea const> areasOfKey(TableArea const& key) noexcept { return {&key, 1}; }
std::span<TableArea const> areasOfKey(EqualValues::Key const& key) noexcept {
  return {&key.area, 1};
}
/// Tuples of classes go with the classes' numbers, which new values anywhere in the areas of the
/// classes change.
TableAreas areasOfKey(TableAreas const& key) noexcept {
  TableAreas areas;
  for (TableArea const& area : key) {
    areas.push_back(indexedArea(area));
  }
  return areas;
}
/// New values in the other area can be followed.
TableAreas areasOfKey(ClassAggregates::Key const& key) noexcept { return areasOfKey(key.classes); }
TableAreas areasOfKey(CallKey const& key) noexcept {
  TableAreas areas;
  for (CallArgument const& argument : key.arguments) {
    areas.push_back(argument.area);
  }
  return areas;
}

// Whether the index of a key borrows texts of cells.

template <class Key>
bool borrowsTexts(Key const& /*key*/) noexcept {
  return true;
}
bool borrowsTexts(CallKey const& /*key*/) noexcept { return false; }

/// The cells of a table that have new values.
struct NewValues {
  DOM::Table const& table;
  std::span<TableRange const> areas;
  bool haveCellsMoved;  ///< all borrowed texts of the table are lost
};

bool isReached(TableArea const& area, NewValues const& values) {
  return area.table == &values.table &&
         std::ranges::any_of(values.areas, [&](TableRange const& changed) {
           return !intersect(area.toTableRange(), changed).isEmpty();
         });
}

template <class Key>
bool isStale(Key const& key, NewValues const& values) {
  auto const areas = areasOfKey(key);
  bool const losesTexts = values.haveCellsMoved && borrowsTexts(key);
  return std::ranges::any_of(areas, [&](TableArea const& area) {
    return (losesTexts && area.table == &values.table) || isReached(area, values);
  });
}

}  // namespace

void LookupStore::valuesChanged(DOM::Table const& table, std::span<TableRange const> areas) {
  NewValues const values{table, areas, haveCellsMoved(table)};
  auto const isStaleKey = [&](auto const& key) { return isStale(key, values); };
  std::apply([&](auto&... maps) { (maps.forgetIf(isStaleKey), ...); }, _maps);
  map<ClassAggregates>().renewIf(
      [&](ClassAggregates::Key const& key) { return isReached(key.values, values); },
      [&](ClassAggregates const& known) { return known.renew(areas); });
}

bool LookupStore::haveCellsMoved(DOM::Table const& table) {
  auto const [known, isNew] = _layoutVersions.try_emplace(&table, table.getLayoutVersion());
  bool const haveMoved = isNew || known->second != table.getLayoutVersion();
  known->second = table.getLayoutVersion();
  return haveMoved;
}

}  // namespace Zorv::Formulas
