// Relations between the numbers of two ranges.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Grid.h"
#include "Formulas/Functions/Moments.h"
#include "Formulas/Functions/Numbers.h"
#include "Formulas/Values/Outcome.h"

namespace Zorv::Formulas {

namespace {

/// The pairs of numbers at equal positions of two arguments; a position counts where both values
/// are numbers.
class NumberPairs {
public:
  NumberPairs(StepMeter& steps, Value const& ys, Value const& xs) : _steps(&steps) {
    auto const yGrid = Grid::of(ys);
    auto const xGrid = Grid::of(xs);
    if (!yGrid || !xGrid) {
      _error = Grid::refuse(yGrid ? xs : ys);
    } else if (yGrid->size() != xGrid->size()) {
      _error = Value::error(FormulaErrorCode::NotAvailable);
    } else {
      read(*yGrid, *xGrid);
    }
  }

  /// Set where an argument is no range, holds an error, or is larger than the other one.
  [[nodiscard]] std::optional<Value> const& error() const noexcept { return _error; }
  [[nodiscard]] std::vector<double> const& ys() const noexcept { return _ys; }
  [[nodiscard]] std::vector<double> const& xs() const noexcept { return _xs; }

private:
  void read(Grid const& ys, Grid const& xs) {
    // Values that an array repeats downwards are pairs, too: all of them are visited.
    if (ys.isReference()) {
      ys.visit(*_steps, 0, ys.rows(), 0, ys.columns(),
               [&](std::uint32_t row, std::uint32_t column, Value const& y) {
                 return takeAt(std::uint64_t{row} * ys.columns() + column, y, xs);
               });
    } else {
      for (std::uint64_t position = 0; position < ys.size(); ++position) {
        if (!takeAt(position, at(ys, position), xs)) {
          return;
        }
      }
    }
  }

  /// Positions count row by row, since a row may be paired with a column.
  static Value at(Grid const& grid, std::uint64_t position) {
    return grid.at(static_cast<std::uint32_t>(position / grid.columns()),
                   static_cast<std::uint32_t>(position % grid.columns()));
  }

  bool takeAt(std::uint64_t position, Value const& y, Grid const& xs) {
    constexpr std::uint64_t stepsOfPair = 8;
    _steps->spend(stepsOfPair);
    take(y, at(xs, position));
    return !_error;
  }

  void take(Value const& y, Value const& x) {
    if (y.isError() || x.isError()) {
      _error = y.isError() ? y : x;
    } else if (y.isNumber() && x.isNumber()) {
      addNumber(*_steps, _ys, y.asNumber(), 1);
      addNumber(*_steps, _xs, x.asNumber(), 1);
    }
  }

  StepMeter* _steps;
  std::vector<double> _ys;
  std::vector<double> _xs;
  std::optional<Value> _error;
};

/// The sums from which the functions below are calculated.
struct Relation {
  double count = 0.0;
  double meanX = 0.0;
  double meanY = 0.0;
  double squaresX = 0.0;  ///< of the distances from the mean
  double squaresY = 0.0;
  double products = 0.0;

  [[nodiscard]] double slope() const noexcept { return products / squaresX; }
  [[nodiscard]] double intercept() const noexcept { return meanY - slope() * meanX; }
};

Relation relate(NumberPairs const& pairs) {
  Relation relation;
  relation.count = static_cast<double>(pairs.xs().size());
  if (pairs.xs().empty()) {
    return relation;
  }
  relation.meanX = meanOf(pairs.xs());
  relation.meanY = meanOf(pairs.ys());
  for (std::size_t i = 0; i < pairs.xs().size(); ++i) {
    double const x = pairs.xs()[i] - relation.meanX;
    double const y = pairs.ys()[i] - relation.meanY;
    relation.squaresX += x * x;
    relation.squaresY += y * y;
    relation.products += x * y;
  }
  return relation;
}

/// The relation of two arguments, the dependent one first; `#NUM!` where it is beyond numbers.
Outcome<Relation> relate(StepMeter& steps, Value const& ys, Value const& xs) {
  NumberPairs const pairs(steps, ys, xs);
  if (pairs.error()) {
    return pairs.error()->asError();
  }
  Relation const relation = relate(pairs);
  bool const isFinite = std::isfinite(relation.squaresX) && std::isfinite(relation.squaresY);
  return isFinite ? Outcome<Relation>(relation) : Outcome<Relation>(FormulaErrorCode::Number);
}

/// A function of two ranges, the dependent one first.
template <Value (*finish)(Relation const&)>
Value ofPairs(Call& call) {
  auto const relation = relate(call.steps(), call[0], call[1]);
  return relation.isError() ? relation.error() : finish(*relation);
}

Value correlation(Relation const& relation) {
  if (relation.squaresX == 0.0 || relation.squaresY == 0.0) {
    return divisionByZero();
  }
  // One root rounds once, so that what lies on a line has the correlation 1; where the product is
  // too large or too small, the root of each is taken.
  double const product = relation.squaresX * relation.squaresY;
  double const divisor = std::isnormal(product)
                             ? std::sqrt(product)
                             : std::sqrt(relation.squaresX) * std::sqrt(relation.squaresY);
  return Value::number(std::clamp(relation.products / divisor, -1.0, 1.0));
}

Value determination(Relation const& relation) {
  Value const root = correlation(relation);
  return root.isError() ? root : Value::number(root.asNumber() * root.asNumber());
}

Value slope(Relation const& relation) {
  return relation.squaresX == 0.0 ? divisionByZero() : Value::number(relation.slope());
}

Value intercept(Relation const& relation) {
  return relation.squaresX == 0.0 ? divisionByZero() : Value::number(relation.intercept());
}

/// STEYX: the deviation of the dependent numbers from the straight line.
Value standardError(Relation const& relation) {
  if (relation.count < 3.0 || relation.squaresX == 0.0) {
    return divisionByZero();
  }
  double const rest = relation.squaresY - relation.slope() * relation.products;
  return Value::number(std::sqrt(std::max(rest, 0.0) / (relation.count - 2.0)));
}

Value populationCovariance(Relation const& relation) {
  return relation.count == 0.0 ? divisionByZero()
                               : Value::number(relation.products / relation.count);
}

Value sampleCovariance(Relation const& relation) {
  return relation.count < 2.0 ? divisionByZero()
                              : Value::number(relation.products / (relation.count - 1.0));
}

/// FORECAST(x, ys, xs): the value of the straight line at x.
Value forecast(Call& call) {
  auto const outcome = relate(call.steps(), call[1], call[2]);
  if (outcome.isError()) {
    return outcome.error();
  }
  Relation const& relation = *outcome;
  if (relation.squaresX == 0.0) {
    return divisionByZero();
  }
  return Value::number(relation.meanY + relation.slope() * (call.number(0) - relation.meanX));
}

}  // namespace

std::span<FunctionEntry const> regressionFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"CORREL", "x:a, y:a", ofPairs<correlation>,
                    "Correlation coefficient of pairs."},
      FunctionEntry{"COVAR", "x:a, y:a", ofPairs<populationCovariance>,
                    "Covariance of a whole population of pairs."},
      FunctionEntry{"COVARIANCE.P", "x:a, y:a", ofPairs<populationCovariance>,
                    "Covariance of a whole population of pairs."},
      FunctionEntry{"COVARIANCE.S", "x:a, y:a", ofPairs<sampleCovariance>,
                    "Covariance of a sample of pairs."},
      FunctionEntry{"FORECAST", "x:n, knownY:a, knownX:a", forecast,
                    "Value at x of the line that fits pairs best."},
      FunctionEntry{"FORECAST.LINEAR", "x:n, knownY:a, knownX:a", forecast,
                    "Value at x of the line that fits pairs best."},
      FunctionEntry{"INTERCEPT", "knownY:a, knownX:a", ofPairs<intercept>,
                    "Value at 0 of the line that fits pairs best."},
      FunctionEntry{"PEARSON", "x:a, y:a", ofPairs<correlation>,
                    "Correlation coefficient of pairs."},
      FunctionEntry{"RSQ", "knownY:a, knownX:a", ofPairs<determination>,
                    "Square of the correlation coefficient of pairs."},
      FunctionEntry{"SLOPE", "knownY:a, knownX:a", ofPairs<slope>,
                    "Slope of the line that fits pairs best."},
      FunctionEntry{"STEYX", "knownY:a, knownX:a", ofPairs<standardError>,
                    "Standard error of the line that fits pairs best."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
