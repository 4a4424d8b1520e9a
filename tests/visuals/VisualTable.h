#pragma once

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "DOM/A1Notation.h"
#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "Formulas/ParseExpr.h"
#include "support/PlainHost.h"
#include "visuals/VisualResolver.h"

namespace Zorv::TestSupport {

/// A table with visual formats, and what resolves them. Not to be changed after prepare().
class VisualTable {
public:
  void set(std::string const& cell, FormulaValue value) {
    auto const place = DOM::A1Notation::parseCell(cell).value();
    table.setValue(place.getRow().get(), place.getColumn().get(), std::move(value));
  }
  void set(std::string const& cell, double number) {
    set(cell, FormulaModel::FormulaNumber{FloatNumber(number)});
  }
  /// Numbers below each other, from A1 on.
  void setColumn(std::initializer_list<double> numbers) {
    unsigned long row = 0;
    for (double const number : numbers) {
      table.setValue(row++, 0, FormulaModel::FormulaNumber{FloatNumber(number)});
    }
  }

  /// Adds a visual format of lower priority than everything so far.
  Visuals::VisualFormat& addVisual(std::string const& ranges, Visuals::VisualKind kind) {
    auto format = std::make_unique<Visuals::VisualFormat>();
    auto const parsed = DOM::A1Notation::parseRanges(ranges);
    for (auto const& range : parsed.value()) {
      format->ranges.push_back(table.toRangeByID(range));
    }
    format->kind = std::move(kind);
    format->formatsBefore = table.getLiveConditionalFormats().size();
    auto& added = *format;
    formats.push_back(std::move(format));
    return added;
  }

  /// Adds a conditional format of lower priority than everything so far.
  void addCondition(std::string const& ranges, std::string_view formula, bool stops = false,
                    UUID const& style = {}) {
    table.addConditionalFormat(
        DOM::A1Notation::parseRanges(ranges).value(),
        DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::FormulaIsTrue,
                                            Formulas::parseExpr(formula)),
        style, stops);
  }

  /// A named style with a fill.
  UUID addFill() {
    UUID const style = UUID::generate();
    auto props = std::make_shared<DOM::CellProps>();
    props->fillColour = DOM::Colour{1, 2, 3};
    styles.getTableStyles()[style].setCellProps(std::move(props));
    return style;
  }

  void prepare() {
    calculator.emplace(std::make_unique<PlainValueContextProvider>(table));
    resolver.emplace(calculator->prepare(styles, table));
    visuals.emplace(
        Visuals::VisualSources{.table = table,
                               .formats = formats,
                               .provider = values,
                               .conditionalFormats = calculator->getConditionalFormatRefs(table),
                               .resolver = *resolver,
                               .styles = styles});
  }

  Visuals::CellVisuals resolve(std::string const& cell) {
    if (!visuals) {
      prepare();
    }
    auto const place = DOM::A1Notation::parseCell(cell).value();
    return visuals->resolve(table.getCellInfo(place.getRow().get(), place.getColumn().get()));
  }

  DOM::Table table;
  DOM::Styles styles;
  Visuals::VisualFormats formats;
  PlainValueContextProvider values{table};
  std::optional<ConditionalFormatters::ConditionalFormattingPropsCalculator> calculator{};
  std::optional<ConditionalFormatters::TableResolver> resolver{};
  std::optional<Visuals::VisualResolver> visuals{};
};

[[nodiscard]] inline Visuals::Threshold threshold(Visuals::ThresholdKind kind, double operand = 0) {
  return {.kind = kind, .operand = operand};
}

[[nodiscard]] inline Visuals::Threshold formulaThreshold(
    std::string_view formula, Visuals::ThresholdKind kind = Visuals::ThresholdKind::Formula) {
  return {.kind = kind, .operand = Formulas::parseExpr(formula)};
}

/// A scale from black to RGB 100, 100, 100: the colour is the percentage.
[[nodiscard]] inline Visuals::ColourScale makeScale(Visuals::Threshold low,
                                                    Visuals::Threshold high) {
  return {{{std::move(low), {0, 0, 0}}, {std::move(high), {100, 100, 100}}}};
}
[[nodiscard]] inline Visuals::ColourScale makeScale() {
  return makeScale(threshold(Visuals::ThresholdKind::Min), threshold(Visuals::ThresholdKind::Max));
}

/// A bar over the whole cell.
[[nodiscard]] inline Visuals::DataBar makeBar(Visuals::Threshold low, Visuals::Threshold high) {
  Visuals::DataBar bar;
  bar.minimum = std::move(low);
  bar.maximum = std::move(high);
  bar.minLength = 0;
  bar.maxLength = 100;
  return bar;
}
[[nodiscard]] inline Visuals::DataBar makeBar() {
  return makeBar(threshold(Visuals::ThresholdKind::Min), threshold(Visuals::ThresholdKind::Max));
}

/// Three arrows by percent.
[[nodiscard]] inline Visuals::IconSet makeIcons() {
  using Kind = Visuals::ThresholdKind;
  return {.name = Visuals::IconSetName::Arrows3,
          .steps = {threshold(Kind::Percent, 0), threshold(Kind::Percent, 33),
                    threshold(Kind::Percent, 67)}};
}

}  // namespace Zorv::TestSupport
