#include "visuals/Prepare/BoundsOf.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include <fmt/format.h>
#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include "FormulaModel/FormulaValueAccess.h"
#include "visuals/Draw/ShareOf.h"
#include "visuals/ThresholdError.h"

namespace Zorv::Visuals {

namespace {

using DOM::FormulaSyntaxTree::Expr;

/// The number of a formula's value. An empty cell counts as zero, as in formulas.
class ToNumber : public boost::static_visitor<double> {
public:
  double operator()(FormulaModel::FormulaNumber const& number) const { return number.value.get(); }
  double operator()(FormulaModel::FormulaEmpty const& /*empty*/) const { return 0; }
  double operator()(FormulaModel::FormulaString const& /*text*/) const { refuse("a text"); }
  double operator()(FormulaModel::FormulaBoolean const& /*truth*/) const {
    refuse("a truth value");
  }
  double operator()(FormulaModel::FormulaError const& error) const {
    refuse(FormulaModel::toText(error.code));
  }
  [[noreturn]] static void refuse(std::string_view what) {
    throw ThresholdError(fmt::format("the formula of a threshold gives {}, not a number", what));
  }
};

/// Finds one threshold after the other.
class BoundsFinder {
public:
  BoundsFinder(NumberStatistics::Source const& source, bool hasPercentiles, CellIndex baseCell,
               FormulaEvaluator& formulas) noexcept
      : _source(source),
        _hasPercentiles(hasPercentiles),
        _baseCell(baseCell),
        _formulas(formulas) {}

  double find(Threshold const& threshold) {
    switch (threshold.kind) {
      case ThresholdKind::Min:
        return getStatistics().getLowest();
      case ThresholdKind::Max:
        return getStatistics().getHighest();
      case ThresholdKind::AutoMin:
        return std::min(0.0, getStatistics().getLowest());
      case ThresholdKind::AutoMax:
        return std::max(0.0, getStatistics().getHighest());
      case ThresholdKind::Percent:
        return findPercent(findOperand(threshold));
      case ThresholdKind::Percentile:
        return getStatistics().findPercentile(findOperand(threshold));
      case ThresholdKind::Number:
      case ThresholdKind::Formula:
        break;
    }
    return findOperand(threshold);
  }

private:
  double findPercent(double percent) {
    constexpr double all = 100;
    double const lowest = getStatistics().getLowest();
    double const highest = getStatistics().getHighest();
    double const way = (highest - lowest) * percent;  // multiplied first: exact for whole numbers
    return std::isfinite(way) ? lowest + way / all : interpolate(lowest, highest, percent / all);
  }

  double findOperand(Threshold const& threshold) {
    if (auto const* const number = std::get_if<double>(&threshold.operand)) {
      return *number;
    }
    auto const value = _formulas.evaluate(std::get<Expr>(threshold.operand), _baseCell, _baseCell);
    if (!value) {
      ToNumber::refuse("several cells");
    }
    return boost::apply_visitor(ToNumber(), *value);
  }

  NumberStatistics const& getStatistics() {
    if (!_statistics) {
      _statistics.emplace(_source, _hasPercentiles);
    }
    return *_statistics;
  }

  NumberStatistics::Source const& _source;
  bool _hasPercentiles;
  CellIndex _baseCell;
  FormulaEvaluator& _formulas;
  std::optional<NumberStatistics> _statistics;
};

/// The lower end of the first step of an icon set does not count.
std::size_t countIgnored(VisualKind const& kind) noexcept {
  return std::holds_alternative<IconSet>(kind) ? 1 : 0;
}

}  // namespace

bool dependsOnMoment(VisualKind const& kind) {
  return std::ranges::any_of(listThresholds(kind), [](Threshold const* threshold) {
    auto const* const expr = std::get_if<Expr>(&threshold->operand);
    return expr != nullptr &&
           (expr->getTraits().callsVolatileFunctions || expr->getTraits().usesNames);
  });
}

Bounds findBounds(VisualKind const& kind, NumberStatistics::Source const& source,
                  CellIndex baseCell, FormulaEvaluator& formulas) {
  auto const thresholds = listThresholds(kind);
  bool const hasPercentiles = std::ranges::any_of(thresholds, [](Threshold const* threshold) {
    return threshold->kind == ThresholdKind::Percentile;
  });
  BoundsFinder finder(source, hasPercentiles, baseCell, formulas);
  std::size_t const ignored = countIgnored(kind);
  Bounds bounds;
  for (std::size_t index = 0; index < thresholds.size(); ++index) {
    bounds.add(index < ignored ? std::numeric_limits<double>::lowest()
                               : finder.find(*thresholds[index]));
  }
  return bounds;
}

}  // namespace Zorv::Visuals
