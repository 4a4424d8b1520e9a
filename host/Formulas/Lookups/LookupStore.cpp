#include "Formulas/Lookups/LookupStore.h"

#include <algorithm>
#include <utility>

#include "DOM/Table.h"

namespace Zorv::Formulas {

namespace {

bool isReached(TableArea const& area, DOM::Table const& table,
               std::span<TableRange const> areas) noexcept {
  return area.table == &table && std::ranges::any_of(areas, [&](TableRange const& changed) {
           return !intersect(area.toTableRange(), changed).isEmpty();
         });
}

/// The classes of an area of criteria.
EqualValues::Key classesOf(TableArea const& area) noexcept {
  return {indexedArea(area), Equality::Criterion};
}

template <class Edits, class Key>
std::span<ClassEdit const> findEdits(Edits const& edits, Key const& key) {
  auto const found = edits.find(key);
  return found == edits.end() ? std::span<ClassEdit const>() : found->second;
}

}  // namespace

void LookupStore::valuesChanged(DOM::Table const& table, std::span<TableRange const> areas) {
  NewValues const values{table, areas, haveCellsMoved(table)};
  map<OrderedValues>().forgetIf([&](TableArea const& area) {
    return (values.haveCellsMoved && area.table == &table) || isReached(area, table, areas);
  });
  map<CallResult>().forgetIf([&](CallKey const& key) {
    return std::ranges::any_of(key.arguments, [&](CallArgument const& argument) {
      return isReached(argument.area, table, areas);
    });
  });
  auto const editsOfValues = followValues(values);
  auto const editsOfTuples = followTuples(editsOfValues);
  followAggregates(values, editsOfValues, editsOfTuples);
}

auto LookupStore::followValues(NewValues const& values) -> Edits<EqualValues> {
  Edits<EqualValues> edits;
  map<EqualValues>().followIf(
      [&](EqualValues::Key const& key) {
        return (values.haveCellsMoved && key.area.table == &values.table) ||
               isReached(key.area, values.table, values.areas);
      },
      [&](EqualValues::Key const& key, EqualValues& index) {
        auto found = index.follow(values.areas);
        if (found && !found->empty()) {
          edits.emplace(key, std::move(*found));
        }
        return found.has_value();
      });
  return edits;
}

auto LookupStore::followTuples(Edits<EqualValues> const& edits) -> Edits<EqualTuples> {
  Edits<EqualTuples> result;
  auto const isKnown = [&](TableArea const& area) {
    return map<EqualValues>().find(classesOf(area)) != nullptr;
  };
  auto const editsOf = [&](TableArea const& area) { return findEdits(edits, classesOf(area)); };
  map<EqualTuples>().followIf(
      [&](TableAreas const& key) {
        return std::ranges::any_of(
            key, [&](TableArea const& area) { return !isKnown(area) || !editsOf(area).empty(); });
      },
      [&](TableAreas const& key, EqualTuples& index) {
        if (!std::ranges::all_of(key, isKnown)) {
          return false;
        }
        InlineList<std::span<ClassEdit const>> editsOfAreas;
        for (TableArea const& area : key) {
          editsOfAreas.push_back(editsOf(area));
        }
        auto found = index.follow({editsOfAreas.data(), editsOfAreas.size()});
        if (found && !found->empty()) {
          result.emplace(key, std::move(*found));
        }
        return found.has_value();
      });
  return result;
}

void LookupStore::followAggregates(NewValues const& values, Edits<EqualValues> const& editsOfValues,
                                   Edits<EqualTuples> const& editsOfTuples) {
  auto const isOfTuples = [](ClassAggregates::Key const& key) { return key.classes.size() > 1; };
  auto const isKnown = [&](ClassAggregates::Key const& key) {
    return isOfTuples(key) ? map<EqualTuples>().find(key.classes) != nullptr
                           : map<EqualValues>().find(classesOf(key.classes.front())) != nullptr;
  };
  auto const editsOf = [&](ClassAggregates::Key const& key) {
    return isOfTuples(key) ? findEdits(editsOfTuples, key.classes)
                           : findEdits(editsOfValues, classesOf(key.classes.front()));
  };
  auto const hasNewValues = [&](ClassAggregates::Key const& key) {
    return isReached(key.values, values.table, values.areas);
  };
  map<ClassAggregates>().followIf(
      [&](ClassAggregates::Key const& key) {
        return !isKnown(key) || !editsOf(key).empty() || hasNewValues(key);
      },
      [&](ClassAggregates::Key const& key, ClassAggregates& index) {
        return isKnown(key) &&
               index.follow(editsOf(key),
                            hasNewValues(key) ? values.areas : std::span<TableRange const>());
      });
}

bool LookupStore::haveCellsMoved(DOM::Table const& table) {
  auto const [known, isNew] = _layoutVersions.try_emplace(&table, table.getLayoutVersion());
  bool const haveMoved = isNew || known->second != table.getLayoutVersion();
  known->second = table.getLayoutVersion();
  return haveMoved;
}

}  // namespace Zorv::Formulas
