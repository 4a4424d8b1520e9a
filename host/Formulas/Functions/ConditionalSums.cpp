// COUNTIF, SUMIF and similar functions: aggregates of the cells that fulfil criteria.

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
#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Lookups/Aggregate.h"
#include "Formulas/Lookups/LookupSession.h"
#include "Formulas/Values/Criterion.h"

namespace Zorv::Formulas {

namespace {

bool matchesAt(StepMeter& steps, RangeCriterion const& criterion, std::uint32_t row,
               std::uint32_t column) {
  constexpr std::uint64_t stepsOfSearch = 4;
  Value const value = readCell(criterion.area, row, column);
  steps.spend(stepsOfSearch + stepsOf(value));
  return criterion.criterion.matches(value, steps);
}

/// The pairs of a range and a criterion of a call. All ranges have the same size.
class Criteria {
public:
  /// Reads the pairs among some arguments.
  Criteria(Call const& call, std::size_t first, std::size_t end)
      : _lookups(call.evaluator().lookups()), _steps(&call.steps()), _locale(&call.locale()) {
    for (std::size_t i = first; i + 1 < end && !_error; i += 2) {
      add(call[i], Criterion(call[i + 1], call.locale()));
    }
  }

  [[nodiscard]] std::optional<Value> const& error() const noexcept { return _error; }
  [[nodiscard]] Area const& area() const noexcept { return _criteria.front().area; }

  [[nodiscard]] bool matchAt(std::uint32_t row, std::uint32_t column) const {
    return std::ranges::all_of(_criteria, [&](RangeCriterion const& criterion) {
      return matchesAt(*_steps, criterion, row, column);
    });
  }

  /// How many positions fulfil all criteria. Visits existing cells only.
  [[nodiscard]] std::uint64_t count() const {
    if (_lookups != nullptr && _criteria.size() == 1) {
      if (auto const counted = _lookups->count(_criteria.front(), *_locale)) {
        return *counted;
      }
    }
    Others others;
    auto const matching = findMatching(others);
    return matching ? countAmong(*matching, others) : countByWalk();
  }

  /// The aggregate of the cells of an area whose counterparts fulfil the criteria.
  [[nodiscard]] Aggregate aggregate(Area const& values) const {
    Others others;
    auto const matching = findMatching(others);
    return matching ? aggregateMatching(*matching, others, values) : aggregateByWalk(values);
  }

private:
  void add(Value const& range, Criterion const& criterion) {
    if (!range.isReference()) {
      _error = range.isError() ? range : Value::error(FormulaErrorCode::Value);
      return;
    }
    Area const& its = range.asArea();
    if (!_criteria.empty() && (its.height() != area().height() || its.width() != area().width())) {
      _error = Value::error(FormulaErrorCode::Value);
      return;
    }
    _criteria.push_back({its, criterion});
  }

  /// The criteria that an index does not check.
  using Others = boost::container::small_vector<RangeCriterion const*, 4>;

  [[nodiscard]] bool matchAt(Others const& others, std::uint32_t row, std::uint32_t column) const {
    return std::ranges::all_of(others, [&](RangeCriterion const* other) {
      return matchesAt(*_steps, *other, row, column);
    });
  }

  /// The cells that an index finds, and the criteria that it does not check.
  [[nodiscard]] std::optional<MatchingCells> findMatching(Others& others) const {
    if (_lookups == nullptr) {
      return std::nullopt;
    }
    boost::container::small_vector<RangeCriterion const*, 4> equalities;
    for (RangeCriterion const& criterion : _criteria) {
      (criterion.criterion.isEquality() ? equalities : others).push_back(&criterion);
    }
    return _lookups->findMatching({equalities.data(), equalities.size()}, *_locale);
  }

  [[nodiscard]] std::uint64_t countAmong(MatchingCells const& matching,
                                         Others const& others) const {
    if (others.empty()) {
      return matching.count();
    }
    std::uint64_t count = 0;
    matching.forEach([&](std::uint32_t row, std::uint32_t column) {
      count += matchAt(others, row, column) ? 1 : 0;
      return true;
    });
    return count;
  }

  [[nodiscard]] Aggregate aggregateMatching(MatchingCells const& matching, Others const& others,
                                            Area const& values) const {
    if (others.empty()) {
      if (Aggregate const* const known = _lookups->findAggregate(matching, values)) {
        return *known;
      }
    }
    Aggregate result;
    _steps->spend(matching.count());
    matching.forEach([&](std::uint32_t row, std::uint32_t column) {
      if (row < values.height() && column < values.width()) {
        Value const value = readCell(values, row, column);
        if ((value.isNumber() || value.isError()) && matchAt(others, row, column)) {
          result.update(value);
        }
      }
      return !result.error;
    });
    return result;
  }

  [[nodiscard]] Aggregate aggregateByWalk(Area const& values) const {
    Aggregate result;
    forEachCell(*_steps, values, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
      if ((value.isNumber() || value.isError()) && matchAt(row, column)) {
        result.update(value);
      }
      return !result.error;
    });
    return result;
  }

  [[nodiscard]] std::uint64_t countByWalk() const {
    auto const selective = std::ranges::find_if(_criteria, [](RangeCriterion const& criterion) {
      return !criterion.criterion.matchesEmpty();
    });
    if (selective == _criteria.end()) {
      return area().size() - countFailing();
    }
    if (_criteria.size() == 1) {
      return countMatching(*selective);
    }
    std::uint64_t matching = 0;
    forEachCell(
        *_steps, selective->area, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
          matching += selective->criterion.matches(value, *_steps) && matchAt(row, column) ? 1 : 0;
          return true;
        });
    return matching;
  }

  [[nodiscard]] std::uint64_t countMatching(RangeCriterion const& criterion) const {
    std::uint64_t matching = 0;
    forEachCell(*_steps, criterion.area,
                [&](std::uint32_t /*row*/, std::uint32_t /*column*/, Value const& value) {
                  matching += criterion.criterion.matches(value, *_steps) ? 1 : 0;
                  return true;
                });
    return matching;
  }

  /// How many positions fail, where empty ones fulfil all criteria: each of them holds a cell.
  [[nodiscard]] std::uint64_t countFailing() const {
    std::set<std::pair<std::uint32_t, std::uint32_t>> failing;
    for (RangeCriterion const& criterion : _criteria) {
      forEachCell(*_steps, criterion.area,
                  [&](std::uint32_t row, std::uint32_t column, Value const& value) {
                    if (!criterion.criterion.matches(value, *_steps)) {
                      constexpr std::uint64_t stepsOfInsertion = 16;
                      _steps->spend(stepsOfInsertion);
                      failing.emplace(row, column);
                    }
                    return true;
                  });
    }
    return failing.size();
  }

  LookupSession* _lookups;
  StepMeter* _steps;
  OfficeUtils::LocaleContext const* _locale;
  boost::container::small_vector<RangeCriterion, 4> _criteria;
  std::optional<Value> _error;
};

using Finalize = Value (*)(Aggregate const&);

Value finalizeSum(Aggregate const& aggregate) { return Value::number(aggregate.sum); }

Value finalizeAverage(Aggregate const& aggregate) {
  return aggregate.count == 0 ? Value::error(FormulaErrorCode::DivisionByZero)
                              : Value::number(aggregate.sum / static_cast<double>(aggregate.count));
}

Value finalizeMin(Aggregate const& aggregate) {
  return Value::number(aggregate.count == 0 ? 0.0 : aggregate.min);
}

Value finalizeMax(Aggregate const& aggregate) {
  return Value::number(aggregate.count == 0 ? 0.0 : aggregate.max);
}

template <Finalize finalize>
Value finalizeOrFail(Aggregate const& aggregate) {
  return aggregate.error ? Value::error(*aggregate.error) : finalize(aggregate);
}

/// As large as the criteria's area, from the same first cell on; cut off at the sheet's edge.
Area resizeLike(Area area, Area const& model) noexcept {
  constexpr auto rows = static_cast<std::uint32_t>(DOM::Table::rowCount);
  constexpr auto columns = static_cast<std::uint32_t>(DOM::Table::columnCount);
  area.endRow = std::min(rows, area.firstRow + model.height());
  area.endColumn = std::min(columns, area.firstColumn + model.width());
  return area;
}

/// SUMIF(range, criterion, values): the values' size is that of the range.
template <Finalize finalize>
Value aggregateIf(Call& call) {
  Criteria const criteria(call, 0, 2);
  if (criteria.error()) {
    return *criteria.error();
  }
  Value const& values = call.isGiven(2) ? call[2] : call[0];
  if (!values.isReference()) {
    return values.isError() ? values : Value::error(FormulaErrorCode::Value);
  }
  return finalizeOrFail<finalize>(criteria.aggregate(resizeLike(values.asArea(), criteria.area())));
}

/// SUMIFS(values, range, criterion, ...)
template <Finalize finalize>
Value aggregateIfs(Call& call) {
  Value const& values = call[0];
  Criteria const criteria(call, 1, call.count());
  if (criteria.error()) {
    return *criteria.error();
  }
  if (!values.isReference()) {
    return values.isError() ? values : Value::error(FormulaErrorCode::Value);
  }
  Area const& area = values.asArea();
  if (area.height() != criteria.area().height() || area.width() != criteria.area().width()) {
    return Value::error(FormulaErrorCode::Value);
  }
  return finalizeOrFail<finalize>(criteria.aggregate(area));
}

/// COUNTIF(range, criterion) and COUNTIFS(range, criterion, ...)
Value countIf(Call& call) {
  Criteria const criteria(call, 0, call.count());
  return criteria.error() ? *criteria.error()
                          : Value::number(static_cast<double>(criteria.count()));
}

}  // namespace

std::span<FunctionEntry const> conditionalSumFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"AVERAGEIF", "range:r, criterion:e, [averageRange:r]",
                    aggregateIf<finalizeAverage>,
                    "Mean of the numbers whose cells fulfil a criterion."},
      FunctionEntry{"AVERAGEIFS", "averageRange:r, range:r, criterion:e, (range:r, criterion:e)",
                    aggregateIfs<finalizeAverage>,
                    "Mean of the numbers whose cells fulfil all criteria."},
      FunctionEntry{"COUNTIF", "range:r, criterion:e", countIf,
                    "Number of cells that fulfil a criterion."},
      FunctionEntry{"COUNTIFS", "range:r, criterion:e, (range:r, criterion:e)", countIf,
                    "Number of positions that fulfil all criteria."},
      FunctionEntry{"MAXIFS", "maxRange:r, range:r, criterion:e, (range:r, criterion:e)",
                    aggregateIfs<finalizeMax>,
                    "Largest of the numbers whose cells fulfil all criteria."},
      FunctionEntry{"MINIFS", "minRange:r, range:r, criterion:e, (range:r, criterion:e)",
                    aggregateIfs<finalizeMin>,
                    "Smallest of the numbers whose cells fulfil all criteria."},
      FunctionEntry{"SUMIF", "range:r, criterion:e, [sumRange:r]", aggregateIf<finalizeSum>,
                    "Sum of the numbers whose cells fulfil a criterion."},
      FunctionEntry{"SUMIFS", "sumRange:r, range:r, criterion:e, (range:r, criterion:e)",
                    aggregateIfs<finalizeSum>,
                    "Sum of the numbers whose cells fulfil all criteria."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
