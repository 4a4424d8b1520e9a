#include "Formulas/Lookups/LookupSession.h"

#include <algorithm>
#include <limits>
#include <memory>

#include "DOM/Table.h"
#include "Formulas/Evaluation/Cells.h"
#include "Formulas/Lookups/CallResult.h"
#include "Formulas/Lookups/ClassTotals.h"
#include "Formulas/Lookups/EqualValues.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Operator;

/// Areas up to this size are walked: that costs no more than finding their index.
constexpr std::uint64_t fewPositions = 64;

/// From so many cells on, sharing an index out takes less time than waking the threads that help.
constexpr std::uint64_t cellsToShare = 16'384;

bool isIndexed(Area const& area) noexcept {
  return area.size() > fewPositions && area.size() <= std::numeric_limits<std::uint32_t>::max();
}

/// The area whose index serves an area: a part of a column shares that of the whole column, so that
/// ranges which grow or move along it need one index only.
Area indexedArea(Area area) noexcept {
  if (area.width() == 1) {
    area.firstRow = 0;
    area.endRow = DOM::Table::rowCount;
  }
  return area;
}

/// An index over `indexed` spares a walk over `area`.
LookupStore::Effort effortOf(Area const& area, Area const& indexed) {
  return {.spared = maxCellCount(area), .price = maxCellCount(indexed)};
}

/// The same for an index that is made in parts.
LookupStore::Effort sharedEffortOf(Area const& area, Area const& indexed) {
  LookupStore::Effort effort = effortOf(area, indexed);
  effort.isShared = effort.price >= cellsToShare;
  return effort;
}

ClassesOfArea partOf(CellClasses const& classes, Area const& area, Area const& indexed) noexcept {
  std::uint64_t const first = std::uint64_t{area.firstRow - indexed.firstRow} * area.width();
  return {.classes = &classes,
          .firstPosition = static_cast<std::uint32_t>(first),
          .firstCell = classes.firstCellAt(first),
          .endCell = classes.firstCellAt(first + area.size())};
}

bool isOrder(Operator op) noexcept { return op != Operator::Equal && op != Operator::NotEqual; }

}  // namespace

template <class Make>
LookupSession::Known* LookupSession::obtain(LookupKey const& key, LookupStore::Effort effort,
                                            Make const& make) {
  auto const known = std::ranges::find_if(
      _known, [&](Known const& candidate) { return candidate.index && candidate.key == key; });
  if (known != _known.end()) {
    return &*known;
  }
  LookupIndex const* const index = _store->obtain(key, effort, std::cref(make));
  return index == nullptr ? nullptr : remember(key, index);
}

LookupSession::Known* LookupSession::remember(LookupKey const& key, LookupIndex const* index) {
  Known& known = _known[_nextKnown];
  _nextKnown = (_nextKnown + 1) % knownCount;
  known = Known();
  known.key = key;
  known.index = index;
  return &known;
}

LookupSession::Known* LookupSession::obtainClasses(Area const& area, LookupKind kind,
                                                   OfficeUtils::LocaleContext const& locale) {
  if (!isIndexed(area)) {
    return nullptr;
  }
  Area const indexed = indexedArea(area);
  LookupKey const key(kind, indexed);
  Known* const known = obtain(key, sharedEffortOf(area, indexed), [&](SharedWork& work) {
    return std::make_unique<EqualValues const>(indexed, kind, locale, work);
  });
  if (known != nullptr && known->lastArea != TableArea(area)) {
    known->lastArea = TableArea(area);
    known->lastClasses = partOf(static_cast<EqualValues const&>(*known->index), area, indexed);
  }
  return known;
}

OrderedValues const* LookupSession::obtainOrder(Area const& area) {
  if (!isIndexed(area)) {
    return nullptr;
  }
  Known const* const known =
      obtain(LookupKey(LookupKind::Order, area), effortOf(area, area),
             [&](SharedWork& /*work*/) { return std::make_unique<OrderedValues const>(area); });
  return known == nullptr ? nullptr : static_cast<OrderedValues const*>(known->index);
}

std::optional<std::uint64_t> LookupSession::count(Condition const& condition,
                                                  OfficeUtils::LocaleContext const& locale) {
  Area const& area = condition.area;
  Criterion const& criterion = condition.criterion;
  if (criterion.isPattern() || !isIndexed(area)) {
    return std::nullopt;
  }
  if (isOrder(criterion.op())) {
    OrderedValues const* const values = obtainOrder(area);
    return values == nullptr ? std::nullopt
                             : std::optional(values->count(criterion.op(), criterion.operand()));
  }
  Known* const known = obtainClasses(area, LookupKind::CriterionClasses, locale);
  if (known == nullptr) {
    return std::nullopt;
  }
  ClassesOfArea const& classes = known->lastClasses;
  std::uint64_t const values = classes.endCell - classes.firstCell;
  std::uint64_t const empties = criterion.matchesEmpty() ? area.size() - values : 0;
  auto const number =
      static_cast<EqualValues const&>(*known->index).find(criterion.operand(), known->lastCell);
  std::uint64_t const equal =
      number && !criterion.asksForEmptyCells() ? classes.countOf(*number) : 0;
  return empties + (criterion.op() == Operator::Equal ? equal : values - equal);
}

std::optional<MatchingCells> LookupSession::findMatching(
    std::span<Condition const* const> conditions, OfficeUtils::LocaleContext const& locale) {
  if (conditions.empty() || conditions.size() >= Few<TableArea>::capacity) {
    return std::nullopt;
  }
  if (conditions.size() > 1) {
    return findTuple(conditions, locale);
  }
  auto const& [area, criterion] = *conditions.front();
  Known* const known = obtainClasses(area, LookupKind::CriterionClasses, locale);
  if (known == nullptr) {
    return std::nullopt;
  }
  MatchingCells matching;
  matching.area = known->lastClasses;
  matching.width = area.width();
  matching.number =
      static_cast<EqualValues const&>(*known->index).find(criterion.operand(), known->lastCell);
  matching.areas.push_back(TableArea(area));
  return matching;
}

std::optional<MatchingCells> LookupSession::findTuple(std::span<Condition const* const> conditions,
                                                      OfficeUtils::LocaleContext const& locale) {
  MatchingCells matching;
  Few<ClassesOfArea> parts;
  Few<std::uint32_t> numbers;
  for (Condition const* const condition : conditions) {
    Known* const known = obtainClasses(condition->area, LookupKind::CriterionClasses, locale);
    if (known == nullptr) {
      return std::nullopt;
    }
    auto const number = static_cast<EqualValues const&>(*known->index)
                            .find(condition->criterion.operand(), known->lastCell);
    if (number) {
      numbers.push_back(*number);
    }
    parts.push_back(known->lastClasses);
    matching.areas.push_back(TableArea(condition->area));
  }
  matching.area = parts.front();
  matching.width = conditions.front()->area.width();
  if (numbers.size() != parts.size()) {
    return matching;
  }
  Area const& area = conditions.front()->area;
  Known const* const known =
      obtain(LookupKey(LookupKind::TupleClasses, matching.areas), effortOf(area, area),
             [&](SharedWork& /*work*/) { return std::make_unique<EqualTuples const>(parts); });
  if (known == nullptr) {
    return std::nullopt;
  }
  auto const& tuples = static_cast<EqualTuples const&>(*known->index);
  matching.area = {.classes = &tuples, .endCell = tuples.size()};
  matching.number = tuples.find(numbers);
  return matching;
}

Gathered const* LookupSession::findTotals(MatchingCells const& matching, Area const& values) {
  if (!matching.number) {
    return nullptr;
  }
  LookupKey key(LookupKind::Totals, matching.areas);
  key.areas.push_back(TableArea(values));
  Known const* const known = obtain(key, effortOf(values, values), [&](SharedWork& /*work*/) {
    return std::make_unique<ClassTotals const>(matching.area, matching.width, values);
  });
  return known == nullptr ? nullptr
                          : static_cast<ClassTotals const&>(*known->index).find(*matching.number);
}

std::optional<std::optional<std::uint32_t>> LookupSession::findEqual(
    Area const& line, Value const& key, bool isBackwards,
    OfficeUtils::LocaleContext const& locale) {
  Known* const known = obtainClasses(line, LookupKind::ValueClasses, locale);
  if (known == nullptr) {
    return std::nullopt;
  }
  auto const number = static_cast<EqualValues const&>(*known->index).find(key, known->lastCell);
  auto const members =
      number ? known->lastClasses.membersOf(*number) : std::span<std::uint32_t const>();
  if (members.empty()) {
    return std::optional<std::optional<std::uint32_t>>(std::in_place);
  }
  return known->lastClasses.positionOf(isBackwards ? members.back() : members.front());
}

std::optional<Standing> LookupSession::findStanding(Area const& area, double number) {
  OrderedValues const* const values = obtainOrder(area);
  return values == nullptr ? std::nullopt : values->findStanding(number);
}

std::optional<Value> LookupSession::obtainResult(std::uint16_t function,
                                                 std::span<Value const> arguments,
                                                 std::function<Value()> const& calculate) {
  LookupKey key;
  key.kind = LookupKind::CallResult;
  key.function = function;
  bool pays = false;
  for (Value const& argument : arguments) {
    if (argument.isNumber()) {
      key.areas.push_back(TableArea::ofNumber(argument.asNumber()));
    } else {
      key.areas.push_back(TableArea(argument.asArea()));
      pays = pays || isIndexed(argument.asArea());
    }
  }
  if (!pays) {
    return std::nullopt;
  }
  // It costs no more to calculate it for all than for one.
  auto const make = [&](SharedWork& /*work*/) -> std::unique_ptr<LookupIndex const> {
    Value const value = calculate();
    if (!value.isSingle()) {
      return nullptr;
    }
    return std::make_unique<CallResult const>(value);
  };
  Known const* const known = obtain(key, {}, make);
  return known == nullptr ? std::nullopt
                          : std::optional(static_cast<CallResult const&>(*known->index).value());
}

}  // namespace Zorv::Formulas
