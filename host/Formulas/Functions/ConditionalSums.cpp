// COUNTIF, SUMIF and their kin: what is made of the cells that fulfil conditions.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <boost/container/small_vector.hpp>

#include "DOM/Table.h"
#include "Formulas/Evaluation/Criterion.h"
#include "Formulas/Functions/Call.h"
#include "Formulas/Functions/Families.h"

namespace Zorv::Formulas {

namespace {

/// An area of which each cell must fulfil a criterion.
struct Condition {
  Area area;
  Criterion criterion;

  [[nodiscard]] bool holdsAt(std::uint32_t row, std::uint32_t column) const {
    return criterion.matches(readCell(area, row, column));
  }
};

/// The conditions of a call: pairs of a range and a criterion. All ranges have the same size.
class Conditions {
public:
  /// Reads the pairs among some arguments.
  Conditions(Call const& call, std::size_t first, std::size_t end) {
    for (std::size_t i = first; i + 1 < end && !_error; i += 2) {
      add(call[i], Criterion(call[i + 1], call.locale()));
    }
  }

  [[nodiscard]] std::optional<Value> const& error() const noexcept { return _error; }
  [[nodiscard]] Area const& area() const noexcept { return _conditions.front().area; }

  [[nodiscard]] bool holdAt(std::uint32_t row, std::uint32_t column) const {
    return std::ranges::all_of(
        _conditions, [&](Condition const& condition) { return condition.holdsAt(row, column); });
  }

  /// How many positions fulfil all conditions; visits existing cells only.
  [[nodiscard]] std::uint64_t count() const {
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

  boost::container::small_vector<Condition, 4> _conditions;
  std::optional<Value> _error;
};

/// What is gathered from the numbers of the cells that fulfil the conditions.
struct Gathered {
  double total = 0.0;
  double least = std::numeric_limits<double>::infinity();
  double most = -std::numeric_limits<double>::infinity();
  std::uint64_t count = 0;
  std::optional<Value> error;

  void take(Value const& value) {
    if (value.isError()) {
      error = value;
    } else if (value.isNumber()) {
      total += value.asNumber();
      least = std::min(least, value.asNumber());
      most = std::max(most, value.asNumber());
      ++count;
    }
  }
};

/// Gathers from the cells of an area whose counterparts fulfil the conditions.
Gathered gather(Area const& values, Conditions const& conditions) {
  Gathered gathered;
  forEachCell(values, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
    if ((value.isNumber() || value.isError()) && conditions.holdAt(row, column)) {
      gathered.take(value);
    }
    return !gathered.error;
  });
  return gathered;
}

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
  Gathered const gathered = gather(resizeLike(values.asArea(), conditions.area()), conditions);
  return gathered.error ? *gathered.error : finish(gathered);
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
  Gathered const gathered = gather(area, conditions);
  return gathered.error ? *gathered.error : finish(gathered);
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
