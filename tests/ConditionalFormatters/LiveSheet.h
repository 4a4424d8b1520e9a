#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_LiveResolver.h"
#include "DOM/A1Notation.h"
#include "DOM/ConditionalFormatOperator.h"
#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "Formulas/ParseExpr.h"
#include "support/Documents.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::TestSupport {

/// A sheet that is edited, with two fills, for tests of live resolvers.
struct LiveSheet {
  LiveSheet() {
    for (unsigned char index = 1; index <= 2; ++index) {
      addStyle(styles, makeUUID(index))
          .setCellProps(makeProps<DOM::CellProps>([index](DOM::CellProps& props) {
            props.fillColour = DOM::Colour{index, 0, 0};
          }));
    }
  }

  /// Adds a format of lowest priority with one of the fills.
  void addRule(std::string_view ranges, DOM::ConditionalFormatOperator condition,
               unsigned char fill = 1) {
    addFormat(table, *DOM::A1Notation::parseRanges(ranges), std::move(condition), makeUUID(fill));
  }

  /// Writes numbers downwards from row 0 on.
  void setColumn(unsigned long column, std::vector<double> const& values) {
    for (unsigned long row = 0; row < values.size(); ++row) {
      table.setValue(row, column, number(values[row]));
    }
  }

  [[nodiscard]] ConditionalFormatters::LiveResolver follow() const {
    return calculator.follow(styles, table);
  }

  [[nodiscard]] static DOM::ConditionalFormatOperator isTrue(std::string_view formula) {
    return DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::FormulaIsTrue,
                                               Formulas::parseExpr(formula));
  }
  [[nodiscard]] static DOM::ConditionalFormatOperator isAboveAverage() {
    return DOM::AboveAverageConditionalFormatOperator(
        DOM::AboveAverageConditionalFormatType::Above);
  }
  [[nodiscard]] static DOM::ConditionalFormatOperator isToday() {
    return DOM::NullaryConditionalFormatOperator(DOM::NullaryConditionalFormatType::Today);
  }

  DOM::Table table;
  DOM::Styles styles;
  ConditionalFormatters::ConditionalFormattingPropsCalculator calculator{
      std::make_unique<PlainValueContextProvider>(table)};
};

}  // namespace Zorv::TestSupport
