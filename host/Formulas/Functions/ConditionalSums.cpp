// COUNTIF, SUMIF and their kin: what is made of the cells that fulfil conditions.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <boost/container/small_vector.hpp>

#include "DOM/Table.h"
#include "Formulas/Evaluation/Criterion.h"
#include "Formulas/Functions/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Lookups/Gathered.h"
#include "Formulas/Lookups/LookupSession.h"

namespace Zorv::Formulas {

namespace {

bool holdsAt(Condition const& condition, std::uint32_t row, std::uint32_t column) {
  return condition.criterion.matches(readCell(condition.area, row, column));
}

/// The conditions of a call: pairs of a range and a criterion. All ranges have the same size.
class Conditions {
public:
  /// Reads the pairs among some arguments.
  Conditions(Call const& call, std::size_t first, std::size_t end)
      : _lookups(call.evaluator().lookups()), _locale(&call.locale()) {
    for (std::size_t i = first; i + 1 < end && !_error; i += 2) {
      add(call[i], Criterion(call[i + 1], call.locale()));
    }
  }

  [[nodiscard]] std::optional<Value> const& error() const noexcept { return _error; }
  [[nodiscard]] Area const& area() const noexcept { return _conditions.front().area; }

  [[nodiscard]] bool holdAt(std::uint32_t row, std::uint32_t column) const {
    return std::ranges::all_of(
        _conditions, [&](Condition const& condition) { return holdsAt(condition, row, column); });
  }

  /// How many positions fulfil all conditions; visits existing cells only.
  [[nodiscard]] std::uint64_t count() const {
    if (_lookups != nullptr && _conditions.size() == 1) {
      if (auto const counted = _lookups->count(_conditions.front(), *_locale)) {
        return *counted;
      }
    }
    Others others;
    auto const matching = findMatching(others);
    return matching ? countAmong(*matching, others) : countByWalking();
  }

  /// Gathers from the cells of an area whose counterparts fulfil the conditions.
  [[nodiscard]] Gathered gather(Area const& values) const {
    Others others;
    auto const matching = findMatching(others);
    return matching ? gatherAmong(*matching, others, values) : gatherByWalking(values);
  }

private:
  void add(Value const& range, Criterion const& criterion) {
    if (!range.isReference()) {
      _error = range.isError() ? range : Value::error(FormulaErrorCode::Value);
      return;
    }
    Area const& its = range.asArea();
    if (!_conditions.empty() &&
        (its.height() != area().height() || its.width() != area().width())) {
      _error = Value::error(FormulaErrorCode::Value);
      return;
    }
    _conditions.push_back({its, criterion});
  }

  /// The conditions that an index leaves open.
  using Others = boost::container::small_vector<Condition const*, 4>;

  [[nodiscard]] static bool holdAt(Others const& others, std::uint32_t row, std::uint32_t column) {
    return std::ranges::all_of(
        others, [&](Condition const* other) { return holdsAt(*other, row, column); });
  }

  /// The cells that an index finds, and the conditions to which it does not look.
  [[nodiscard]] std::optional<MatchingCells> findMatching(Others& others) const {
    if (_lookups == nullptr) {
      return std::nullopt;
    }
    boost::container::small_vector<Condition const*, 4> equalities;
    for (Condition const& condition : _conditions) {
      (condition.criterion.isEquality() ? equalities : others).push_back(&condition);
    }
    return _lookups->findMatching({equalities.data(), equalities.size()}, *_locale);
  }

  static std::uint64_t countAmong(MatchingCells const& matching, Others const& others) {
    if (others.empty()) {
      return matching.count();
    }
    std::uint64_t count = 0;
    matching.forEach([&](std::uint32_t row, std::uint32_t column) {
      count += holdAt(others, row, column) ? 1 : 0;
      return true;
    });
    return count;
  }

  [[nodiscard]] Gathered gatherAmong(MatchingCells const& matching, Others const& others,
                                     Area const& values) const {
    if (others.empty()) {
      if (Gathered const* const totals = _lookups->findTotals(matching, values)) {
        return *totals;
      }
    }
    Gathered gathered;
    matching.forEach([&](std::uint32_t row, std::uint32_t column) {
      if (row < values.height() && column < values.width()) {
        Value const value = readCell(values, row, column);
        if ((value.isNumber() || value.isError()) && holdAt(others, row, column)) {
          gathered.take(value);
        }
      }
      return !gathered.error;
    });
    return gathered;
  }

  [[nodiscard]] Gathered gatherByWalking(Area const& values) const {
    Gathered gathered;
    forEachCell(values, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
      if ((value.isNumber() || value.isError()) && holdAt(row, column)) {
        gathered.take(value);
      }
      return !gathered.error;
    });
    return gathered;
  }

  [[nodiscard]] std::uint64_t countByWalking() const {
    auto const selective = std::ranges::find_if(_conditions, [](Condition const& condition) {
      return !condition.criterion.matchesEmpty();
    });
    if (selective == _conditions.end()) {
      return area().size() - countFailing();
    }
    if (_conditions.size() == 1) {
      return countMatching(*selective);
    }
    std::uint64_t matching = 0;
    forEachCell(selective->area, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
      matching += selective->criterion.matches(value) && holdAt(row, column) ? 1 : 0;
      return true;
    });
    return matching;
  }

  static std::uint64_t countMatching(Condition const& condition) {
    std::uint64_t matching = 0;
    forEachCell(condition.area,
                [&](std::uint32_t /*row*/, std::uint32_t /*column*/, Value const& value) {
                  matching += condition.criterion.matches(value) ? 1 : 0;
                  return true;
                });
    return matching;
  }

  /// Positions that fail where empty ones fulfil everything: all of them hold a cell somewhere.
  [[nodiscard]] std::uint64_t countFailing() const {
    std::set<std::pair<std::uint32_t, std::uint32_t>> failing;
    for (Condition const& condition : _conditions) {
      forEachCell(condition.area, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
        if (!condition.criterion.matches(value)) {
          failing.emplace(row, column);
        }
        return true;
      });
    }
    return failing.size();
  }

  LookupSession* _lookups;
  OfficeUtils::LocaleContext const* _locale;
  boost::container::small_vector<Condition, 4> _conditions;
  std::optional<Value> _error;
};

using Finish = Value (*)(Gathered const&);

Value finishSum(Gathered const& gathered) { return Value::number(gathered.total); }

Value finishAverage(Gathered const& gathered) {
  return gathered.count == 0 ? Value::error(FormulaErrorCode::DivisionByZero)
                             : Value::number(gathered.total / static_cast<double>(gathered.count));
}

Value finishLeast(Gathered const& gathered) {
  return Value::number(gathered.count == 0 ? 0.0 : gathered.least);
}

Value finishMost(Gathered const& gathered) {
  return Value::number(gathered.count == 0 ? 0.0 : gathered.most);
}

template <Finish finish>
Value finishOrFail(Gathered const& gathered) {
  return gathered.error ? Value::error(*gathered.error) : finish(gathered);
}

/// As large as the conditions' area, from the same first cell on; cut off at the sheet's edge.
Area resizeLike(Area area, Area const& model) noexcept {
  constexpr auto rows = static_cast<std::uint32_t>(DOM::Table::rowCount);
  constexpr auto columns = static_cast<std::uint32_t>(DOM::Table::columnCount);
  area.endRow = std::min(rows, area.firstRow + model.height());
  area.endColumn = std::min(columns, area.firstColumn + model.width());
  return area;
}

/// SUMIF(range, criterion, values): the values' size is that of the range.
template <Finish finish>
Value gatherIf(Call& call) {
  Conditions const conditions(call, 0, 2);
  if (conditions.error()) {
    return *conditions.error();
  }
  Value const& values = call.isGiven(2) ? call[2] : call[0];
  if (!values.isReference()) {
    return values.isError() ? values : Value::error(FormulaErrorCode::Value);
  }
  return finishOrFail<finish>(conditions.gather(resizeLike(values.asArea(), conditions.area())));
}

/// SUMIFS(values, range, criterion, ...)
template <Finish finish>
Value gatherIfs(Call& call) {
  Value const& values = call[0];
  Conditions const conditions(call, 1, call.count());
  if (conditions.error()) {
    return *conditions.error();
  }
  if (!values.isReference()) {
    return values.isError() ? values : Value::error(FormulaErrorCode::Value);
  }
  Area const& area = values.asArea();
  if (area.height() != conditions.area().height() || area.width() != conditions.area().width()) {
    return Value::error(FormulaErrorCode::Value);
  }
  return finishOrFail<finish>(conditions.gather(area));
}

/// COUNTIF(range, criterion) and COUNTIFS(range, criterion, ...)
Value countIf(Call& call) {
  Conditions const conditions(call, 0, call.count());
  return conditions.error() ? *conditions.error()
                            : Value::number(static_cast<double>(conditions.count()));
}

constexpr std::array entries = {
    FunctionEntry{"AVERAGEIF", "re[r]", gatherIf<finishAverage>},
    FunctionEntry{"AVERAGEIFS", "rre(re)", gatherIfs<finishAverage>},
    FunctionEntry{"COUNTIF", "re", countIf},
    FunctionEntry{"COUNTIFS", "re(re)", countIf},
    FunctionEntry{"MAXIFS", "rre(re)", gatherIfs<finishMost>},
    FunctionEntry{"MINIFS", "rre(re)", gatherIfs<finishLeast>},
    FunctionEntry{"SUMIF", "re[r]", gatherIf<finishSum>},
    FunctionEntry{"SUMIFS", "rre(re)", gatherIfs<finishSum>},
};

}  // namespace

std::span<FunctionEntry const> conditionalSumFunctions() noexcept { return entries; }

}  // namespace Zorv::Formulas
