#include "Formulas/Lookups/LookupSession.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

#include "Formulas/Values/Cells.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Operator;

/// Up to this size a walk over an area costs no more than finding its index.
constexpr std::uint64_t fewPositions = 64;

/// From so many cells on, sharing the building of an index takes less time than waking the helpers.
constexpr std::uint64_t cellsToShare = 16'384;

bool isIndexed(Area const& area) noexcept {
  return area.size() > fewPositions && area.size() <= std::numeric_limits<std::uint32_t>::max();
}

/// The cost of an index over `indexed` that saves a walk over `area`.
LookupCost costOf(Area const& area, Area const& indexed) {
  return {.saved = maxCellCount(area), .build = maxCellCount(indexed)};
}

/// The same for an index that is built in parts.
LookupCost sharedCostOf(Area const& area, Area const& indexed) {
  LookupCost cost = costOf(area, indexed);
  cost.isShared = cost.build >= cellsToShare;
  return cost;
}

ClassesOfArea partOf(CellClasses const& classes, Area const& area, Area const& indexed) noexcept {
  std::uint64_t const first = std::uint64_t{area.firstRow - indexed.firstRow} * area.width();
  return {classes, first, first + area.size()};
}

std::uint64_t stepsOfBuilding(Area const& area) {
  constexpr std::uint64_t stepsOfCell = 16;
  return stepsOfCell * maxCellCount(area);
}

bool isOrder(Operator op) noexcept { return op != Operator::Equal && op != Operator::NotEqual; }

/// How many numbers compare to a number as an operator of order says.
std::uint64_t countOrdered(RankCounts const& counts, Operator op) noexcept {
  switch (op) {
    case Operator::Less:
      return counts.below;
    case Operator::LessOrEqual:
      return counts.below + counts.equal;
    case Operator::Greater:
      return counts.above;
    default:
      return counts.above + counts.equal;
  }
}

/// How many positions of an area fulfil a criterion that is none of order, from how many values it
/// holds and how many of them are equal to the operand.
std::uint64_t countByEquality(RangeCriterion const& rangeCriterion, std::uint64_t values,
                              std::uint64_t equal) noexcept {
  auto const& [area, criterion] = rangeCriterion;
  std::uint64_t const empties = criterion.matchesEmpty() ? area.size() - values : 0;
  equal = criterion.asksForEmptyCells() ? 0 : equal;
  return empties + (criterion.op() == Operator::Equal ? equal : values - equal);
}

bool isNaN(Value const& value) noexcept { return value.isNumber() && std::isnan(value.asNumber()); }

}  // namespace

template <class Index, class Use>
auto LookupSession::Recent<Index, Use>::find(typename Index::Key const& key) noexcept -> Entry* {
  auto const found = std::ranges::find_if(
      _entries, [&](Entry const& entry) { return entry.index != nullptr && entry.key == key; });
  return found == _entries.end() ? nullptr : &*found;
}

template <class Index, class Use>
template <class Build>
auto LookupSession::Recent<Index, Use>::getOrCreate(LookupStore& store,
                                                    typename Index::Key const& key, LookupCost cost,
                                                    Build const& build) -> Entry* {
  if (Entry* const known = find(key)) {
    return known;
  }
  Index const* const index = store.map<Index>().getOrCreate(key, cost, std::cref(build));
  if (index == nullptr) {
    return nullptr;
  }
  Entry& entry = _entries[_next];
  _next = (_next + 1) % capacity;
  entry = {.key = key, .index = index, .use = {}};
  return &entry;
}

LookupSession::RecentValues::Entry* LookupSession::findClasses(
    Area const& area, Equality equality, OfficeUtils::LocaleContext const& locale) {
  if (!isIndexed(area)) {
    return nullptr;
  }
  Area const indexed = indexedArea(area);
  auto const build = [&](SharedWork& work) {
    _steps->spend(stepsOfBuilding(indexed));
    return std::make_unique<EqualValues>(indexed, equality, locale, work);
  };
  auto* const entry = _values.getOrCreate(*_store, {TableArea(indexed), equality},
                                          sharedCostOf(area, indexed), build);
  if (entry != nullptr && entry->use.lastArea != TableArea(area)) {
    entry->use.lastArea = TableArea(area);
    entry->use.lastClasses = partOf(*entry->index, area, indexed);
  }
  return entry;
}

OrderedValues const* LookupSession::findOrder(Area const& area) {
  if (!isIndexed(area)) {
    return nullptr;
  }
  auto const build = [&](SharedWork& /*work*/) {
    _steps->spend(stepsOfBuilding(area));
    return std::make_unique<OrderedValues>(area);
  };
  auto const* const entry =
      _orders.getOrCreate(*_store, TableArea(area), costOf(area, area), build);
  return entry == nullptr ? nullptr : entry->index;
}

FollowedArea const* LookupSession::findFollowed(Area const& area, AreaAspect aspect) const {
  FollowedAreas const* const followed = _store->getFollowed();
  return followed != nullptr && isIndexed(area)
             ? followed->find(area.table->getTable(), area.toTableRange(), aspect)
             : nullptr;
}

std::optional<std::uint64_t> LookupSession::count(RangeCriterion const& rangeCriterion,
                                                  OfficeUtils::LocaleContext const& locale) {
  auto const& [area, criterion] = rangeCriterion;
  if (criterion.isPattern() || !isIndexed(area)) {
    return std::nullopt;
  }
  if (auto const followed = countFollowed(rangeCriterion)) {
    return followed;
  }
  if (isOrder(criterion.op())) {
    OrderedValues const* const values = findOrder(area);
    return values == nullptr ? std::nullopt
                             : std::optional(values->count(criterion.op(), criterion.operand()));
  }
  auto* const entry = findClasses(area, Equality::Criterion, locale);
  if (entry == nullptr) {
    return std::nullopt;
  }
  ClassesOfArea const& classes = entry->use.lastClasses;
  std::uint64_t const values = classes.endCell - classes.firstCell;
  auto const found = entry->index->find(criterion.operand(), entry->use.lastCell);
  return countByEquality(rangeCriterion, values, found ? classes.countOf(*found) : 0);
}

std::optional<std::uint64_t> LookupSession::countFollowed(
    RangeCriterion const& rangeCriterion) const {
  auto const& [area, criterion] = rangeCriterion;
  bool const byOrder = isOrder(criterion.op());
  FollowedArea const* const followed =
      findFollowed(area, byOrder ? AreaAspect::Order : AreaAspect::Classes);
  if (followed == nullptr || isNaN(criterion.operand()) ||
      (byOrder && !criterion.operand().isNumber())) {
    return std::nullopt;
  }
  return byOrder
             ? countOrdered(followed->countAround(criterion.operand().asNumber()), criterion.op())
             : countByEquality(rangeCriterion, followed->getSummary().valueCount,
                               followed->countEqual(toFormulaValue(criterion.operand())));
}

std::optional<MatchingCells> LookupSession::findMatching(
    std::span<RangeCriterion const* const> criteria, OfficeUtils::LocaleContext const& locale) {
  if (criteria.empty() || criteria.size() >= TableAreas::capacity) {
    return std::nullopt;
  }
  if (criteria.size() > 1) {
    return findTuples(criteria, locale);
  }
  auto const& [area, criterion] = *criteria.front();
  auto* const entry = findClasses(area, Equality::Criterion, locale);
  if (entry == nullptr) {
    return std::nullopt;
  }
  MatchingCells matching;
  matching.area = entry->use.lastClasses;
  matching.width = area.width();
  matching.classIndex = entry->index->find(criterion.operand(), entry->use.lastCell);
  matching.areas.push_back(TableArea(area));
  return matching;
}

std::optional<MatchingCells> LookupSession::findTuples(
    std::span<RangeCriterion const* const> criteria, OfficeUtils::LocaleContext const& locale) {
  MatchingCells matching;
  InlineList<ClassesOfArea> parts;
  InlineList<std::uint32_t> tuple;
  for (RangeCriterion const* const criterion : criteria) {
    auto* const entry = findClasses(criterion->area, Equality::Criterion, locale);
    if (entry == nullptr) {
      return std::nullopt;
    }
    auto const found = entry->index->find(criterion->criterion.operand(), entry->use.lastCell);
    if (found) {
      tuple.push_back(*found);
    }
    parts.push_back(entry->use.lastClasses);
    matching.areas.push_back(TableArea(criterion->area));
  }
  Area const& area = criteria.front()->area;
  matching.area = parts.front();
  matching.width = area.width();
  if (tuple.size() != parts.size()) {
    return matching;
  }
  auto const build = [&](SharedWork& /*work*/) {
    _steps->spend(stepsOfBuilding(area));
    return std::make_unique<EqualTuples>(parts);
  };
  auto const* const entry = _tuples.getOrCreate(*_store, matching.areas, costOf(area, area), build);
  if (entry == nullptr) {
    return std::nullopt;
  }
  matching.area = ClassesOfArea(*entry->index);
  matching.classIndex = entry->index->find(tuple);
  return matching;
}

Aggregate const* LookupSession::findAggregate(MatchingCells const& matching, Area const& values) {
  if (!matching.classIndex) {
    return nullptr;
  }
  ClassAggregates::Key const key{matching.areas, TableArea(values)};
  auto const build = [&](SharedWork& /*work*/) {
    _steps->spend(stepsOfBuilding(values));
    return std::make_unique<ClassAggregates>(matching.area, matching.width, values);
  };
  auto const* const entry = _aggregates.getOrCreate(*_store, key, costOf(values, values), build);
  return entry == nullptr ? nullptr : entry->index->find(*matching.classIndex);
}

std::optional<std::optional<std::uint32_t>> LookupSession::findEqual(
    Area const& line, Value const& key, bool isBackwards,
    OfficeUtils::LocaleContext const& locale) {
  auto* const entry = findClasses(line, Equality::Search, locale);
  if (entry == nullptr) {
    return std::nullopt;
  }
  ClassesOfArea const& classes = entry->use.lastClasses;
  auto const found = entry->index->find(key, entry->use.lastCell);
  auto const members = found ? classes.membersOf(*found) : std::span<std::uint32_t const>();
  if (members.empty()) {
    return std::optional<std::optional<std::uint32_t>>(std::in_place);
  }
  return classes.positionOf(isBackwards ? members.back() : members.front());
}

std::optional<RankCounts> LookupSession::countAround(Area const& area, double number) {
  FollowedArea const* const followed = findFollowed(area, AreaAspect::Order);
  if (followed != nullptr && !followed->getSummary().firstError && !std::isnan(number)) {
    return followed->countAround(number);
  }
  OrderedValues const* const values = findOrder(area);
  return values == nullptr ? std::nullopt : values->countAround(number);
}

std::optional<Value> LookupSession::getOrCompute(std::uint16_t function,
                                                 std::span<Value const> arguments,
                                                 std::function<Value()> const& compute) {
  CallKey key{.function = function, .arguments = {}};
  bool pays = false;
  for (Value const& argument : arguments) {
    key.arguments.push_back(CallArgument(argument));
    pays = pays || (argument.isReference() && isIndexed(argument.asArea()));
  }
  if (!pays) {
    return std::nullopt;
  }
  auto const build = [&](SharedWork& /*work*/) -> std::unique_ptr<CallResult> {
    Value const value = compute();
    return value.isSingle() ? std::make_unique<CallResult>(value) : nullptr;
  };
  // No cost: to compute it for all costs no more than to compute it for one.
  auto const* const entry = _results.getOrCreate(*_store, key, LookupCost{}, build);
  return entry == nullptr ? std::nullopt : std::optional(entry->index->value());
}

}  // namespace Zorv::Formulas
