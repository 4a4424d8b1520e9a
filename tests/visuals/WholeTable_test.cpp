// Whole tables of random values and formats, against the plainest evaluation for each cell.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <boost/variant/get.hpp>

#include "visuals/VisualTable.h"

namespace Zorv::Visuals {
namespace {

using TestSupport::VisualTable;
using Kind = ThresholdKind;

constexpr unsigned long rows = 12;
constexpr unsigned long columns = 4;

std::optional<double> numberAt(DOM::Table const& table, unsigned long row, unsigned long column) {
  auto const* const cell = table.findCell(row, column);
  auto const* const number =
      cell != nullptr ? boost::get<FormulaModel::FormulaNumber>(&cell->value) : nullptr;
  return number != nullptr ? std::optional(number->value.get()) : std::nullopt;
}

/// The plainest possible evaluation.
class Reference {
public:
  explicit Reference(VisualTable const& table) : _table(table) {}

  CellVisuals resolve(unsigned long row, unsigned long column) const {
    CellVisuals visuals;
    auto const value = numberAt(_table.table, row, column);
    std::size_t const stop = findStop(row, column);
    for (std::size_t format = 0; value && format < _table.formats.size(); ++format) {
      auto const& visual = *_table.formats[format];
      if (holds(visual, row, column) && visual.formatsBefore <= stop) {
        draw(visuals, format, *value);
      }
    }
    visuals.showValue =
        (!visuals.bar || visuals.bar->bar->showValue) &&
        (!visuals.icon || std::get<IconSet>(_table.formats[visuals.icon->format]->kind).showValue);
    return visuals;
  }

private:
  bool holds(VisualFormat const& visual, unsigned long row, unsigned long column) const {
    auto const ranges = DOM::convertToTableRanges(_table.table, visual.ranges);
    return std::ranges::any_of(
        ranges, [&](TableRange const& range) { return range.contains(row, column); });
  }

  /// The index of the conditional format that stops.
  std::size_t findStop(unsigned long row, unsigned long column) const {
    auto const& refs = _table.calculator->getConditionalFormatRefs(_table.table);
    auto const cell = _table.table.getCellInfo(row, column);
    for (std::size_t format = 0; format < refs.size(); ++format) {
      bool const isIn = std::ranges::any_of(
          refs[format].first, [&](TableRange const& range) { return range.contains(row, column); });
      if (isIn && refs[format].second.get().getStopCalculateConditions() &&
          _table.resolver->holds(format, cell)) {
        return format;
      }
    }
    return refs.size();
  }

  std::vector<double> sortedNumbers(VisualFormat const& visual) const {
    std::vector<double> numbers;
    for (unsigned long row = 0; row < rows; ++row) {
      for (unsigned long column = 0; column < columns; ++column) {
        auto const number = numberAt(_table.table, row, column);
        if (number && holds(visual, row, column)) {
          numbers.push_back(*number);
        }
      }
    }
    std::ranges::sort(numbers);
    return numbers;
  }

  static double findBound(Threshold const& threshold, std::vector<double> const& numbers) {
    double const operand = std::get<double>(threshold.operand);
    double const low = numbers.front();
    double const high = numbers.back();
    double const rank = operand / 100 * static_cast<double>(numbers.size() - 1);
    auto const below = static_cast<std::size_t>(rank);
    auto const above = std::min(below + 1, numbers.size() - 1);
    switch (threshold.kind) {
      case Kind::Min:
        return low;
      case Kind::Max:
        return high;
      case Kind::AutoMin:
        return std::min(low, 0.0);
      case Kind::AutoMax:
        return std::max(high, 0.0);
      case Kind::Percent:
        return low + (high - low) * operand / 100;
      case Kind::Percentile:
        return numbers[below] +
               (numbers[above] - numbers[below]) * (rank - static_cast<double>(below));
      default:
        return operand;
    }
  }

  void draw(CellVisuals& visuals, std::size_t format, double value) const {
    auto const& visual = *_table.formats[format];
    auto const numbers = sortedNumbers(visual);
    std::vector<double> bounds;
    for (auto const* threshold : listThresholds(visual.kind)) {
      double const bound = findBound(*threshold, numbers);
      bool const isFirstIcon = bounds.empty() && std::holds_alternative<IconSet>(visual.kind);
      bounds.push_back(isFirstIcon      ? -1e300
                       : bounds.empty() ? bound
                                        : std::max(bound, bounds.back()));
    }
    if (auto const* scale = std::get_if<ColourScale>(&visual.kind); scale && !visuals.scale) {
      visuals.scale = {format, mix(*scale, bounds, value), false};
    } else if (auto const* bar = std::get_if<DataBar>(&visual.kind); bar && !visuals.bar) {
      double const length =
          value <= bounds[0] ? 0 : std::min(1.0, (value - bounds[0]) / (bounds[1] - bounds[0]));
      visuals.bar = {format, {0, value > bounds[1] ? 1 : length, {}}, value < 0, bar};
    } else if (auto const* set = std::get_if<IconSet>(&visual.kind); set && !visuals.icon) {
      unsigned index = 0;
      for (unsigned step = 1; step < bounds.size(); ++step) {
        if (value < bounds[step] || (value == bounds[step] && !set->steps[step].orEqual)) {
          break;
        }
        index = step;
      }
      visuals.icon = {
          format,
          {set->name, set->isReversed ? static_cast<unsigned>(bounds.size()) - 1 - index : index}};
    }
  }

  static DOM::Colour mix(ColourScale const& scale, std::vector<double> const& bounds,
                         double value) {
    if (value <= bounds.front()) {
      return scale.points.front().colour;
    }
    for (std::size_t next = 1; next < bounds.size(); ++next) {
      if (value <= bounds[next]) {
        double const share = (value - bounds[next - 1]) / (bounds[next] - bounds[next - 1]);
        double const from = scale.points[next - 1].colour.red;
        double const to = scale.points[next].colour.red;
        auto const grey = static_cast<std::uint8_t>(std::lround(from + (to - from) * share));
        return {grey, grey, grey};
      }
    }
    return scale.points.back().colour;
  }

  VisualTable const& _table;
};

Threshold drawThreshold() {
  auto const kind = *rc::gen::element(Kind::Min, Kind::Max, Kind::Number, Kind::Percent,
                                      Kind::Percentile, Kind::AutoMin, Kind::AutoMax);
  Threshold threshold{.kind = kind};
  threshold.operand = static_cast<double>(*rc::gen::inRange(0, 101));
  threshold.orEqual = *rc::gen::arbitrary<bool>();
  return threshold;
}

VisualKind drawKind() {
  switch (*rc::gen::inRange(0, 3)) {
    case 0: {
      ColourScale scale;
      auto const count = *rc::gen::element(2, 3);
      for (int point = 0; point < count; ++point) {
        auto const grey = static_cast<std::uint8_t>(*rc::gen::inRange(0, 256));
        scale.points.push_back({drawThreshold(), {grey, grey, grey}});
      }
      return scale;
    }
    case 1: {
      auto bar = TestSupport::makeBar(drawThreshold(), drawThreshold());
      bar.showValue = *rc::gen::arbitrary<bool>();
      return bar;
    }
    default:
      return IconSet{.name = IconSetName::Flags3,
                     .steps = {drawThreshold(), drawThreshold(), drawThreshold()},
                     .isReversed = *rc::gen::arbitrary<bool>(),
                     .showValue = *rc::gen::arbitrary<bool>()};
  }
}

std::string drawRange() {
  auto const first = *rc::gen::inRange(0UL, rows);
  auto const firstColumn = *rc::gen::inRange(0UL, columns);
  auto const end = *rc::gen::inRange(first + 1, rows + 1);
  auto const endColumn = *rc::gen::inRange(firstColumn + 1, columns + 1);
  return DOM::A1Notation::toAddress(TableRange{first, firstColumn, end, endColumn});
}

void fill(VisualTable& table) {
  for (unsigned long row = 0; row < rows; ++row) {
    for (unsigned long column = 0; column < columns; ++column) {
      int const number = *rc::gen::inRange(-60, 120);
      switch (*rc::gen::inRange(0, 6)) {
        case 0:
          break;
        case 1:
          table.table.setValue(row, column, FormulaModel::FormulaString{"9"});
          break;
        default:
          table.table.setValue(
              row, column, FormulaModel::FormulaNumber{FloatNumber(static_cast<double>(number))});
      }
    }
  }
  int const formats = *rc::gen::inRange(1, 8);
  for (int format = 0; format < formats; ++format) {
    if (*rc::gen::inRange(0, 4) == 0) {
      table.addCondition(drawRange(), *rc::gen::element<std::string>("A1>20", "TRUE", "A1<0"),
                         *rc::gen::arbitrary<bool>());
    } else {
      table.addVisual(drawRange() + " " + drawRange(), drawKind());
    }
  }
  table.prepare();
}

void checkEqual(CellVisuals const& actual, CellVisuals const& expected) {
  RC_ASSERT(actual.scale.has_value() == expected.scale.has_value());
  if (actual.scale) {
    RC_ASSERT(actual.scale->format == expected.scale->format);
    // The sums are rounded in another order.
    RC_ASSERT(std::abs(actual.scale->colour.red - expected.scale->colour.red) <= 1);
  }
  RC_ASSERT(actual.bar.has_value() == expected.bar.has_value());
  if (actual.bar) {
    RC_ASSERT(actual.bar->format == expected.bar->format);
    RC_ASSERT(actual.bar->isNegative == expected.bar->isNegative);
    RC_ASSERT(std::abs(actual.bar->extent.to - expected.bar->extent.to) < 1e-9);
  }
  RC_ASSERT(actual.icon.has_value() == expected.icon.has_value());
  if (actual.icon) {
    RC_ASSERT(actual.icon->format == expected.icon->format);
    RC_ASSERT(actual.icon->icon == expected.icon->icon);
  }
  RC_ASSERT(actual.showValue == expected.showValue);
}

RC_GTEST_PROP(WholeTable, EveryCellHasWhatThePlainEvaluationGives, ()) {
  VisualTable table;
  fill(table);
  Reference const reference(table);
  for (unsigned const threads : {1U, 2U, 7U}) {
    std::size_t count = 0;
    table.visuals->visit({.range = {0, 0, rows, columns},
                          .positions = ConditionalFormatters::TablePass::Positions::All,
                          .threadCount = threads},
                         [&](VisualCell const& cell) {
                           auto const& info = cell.resolved.cellInfo;
                           checkEqual(cell.visuals,
                                      reference.resolve(info.getRowIndex(), info.getColIndex()));
                           ++count;
                         });
    RC_ASSERT(count == rows * columns);
  }
}

}  // namespace
}  // namespace Zorv::Visuals
