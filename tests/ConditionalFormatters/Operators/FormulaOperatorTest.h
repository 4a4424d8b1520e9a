#pragma once

#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "DOM/Table.h"
#include "support/RecordingHost.h"
#include "support/Values.h"

namespace Zorv::TestSupport {

/// Base of the tests of conditions with formulas: a table, and an engine and a context provider
/// that note their calls in one journal.
class FormulaOperatorTest : public testing::Test {
protected:
  static CellIndex at(unsigned long row, unsigned long column) {
    return {RowIndex(row), ColumnIndex(column)};
  }

  /// The cell under test, in the base cell's place unless told otherwise.
  static ConditionalFormatters::FormulaValueData cell(FormulaValue value,
                                                      CellIndex index = at(4, 2)) {
    return {std::move(value), index};
  }

  CellIndex const baseCell = at(4, 2);
  RecordingHost host;
  DOM::Table const& table = host.table;
  Journal& journal = host.journal;
  RecordingContextProvider& contextProvider = host.contextProvider;
  RecordingEngine& engine = host.engine;
};

/// A value with its place among the values of its kind: the smaller place is the lesser value, and
/// values in one place are equal. A NaN has no place.
struct PlacedValue {
  std::string name;
  FormulaValue value;
  std::optional<int> place;
};

/// Values of all kinds.
inline std::vector<PlacedValue> makePlacedValues() {
  using FormulaModel::FormulaErrorCode;
  return {
      {"empty", empty(), 0},
      {"-inf", number(-infinity), 0},
      {"-2.5", number(-2.5), 1},
      {"-0.0", number(-0.0), 2},
      {"0.0", number(0.0), 2},
      {"0.1+0.2", number(0.1 + 0.2), 4},
      {"0.3", number(0.3), 3},
      {"5", number(5), 5},
      {"inf", number(infinity), 6},
      {"NaN", number(std::nan("")), std::nullopt},
      {"no letters", text(""), 0},
      {"text 5", text("5"), 1},
      {"ABC", text("ABC"), 2},
      {"ab", text("ab"), 3},
      {"ab and a zero byte", text(std::string("ab\0", 3)), 4},
      {"abc", text("abc"), 5},
      {"abc again", text("abc"), 5},
      {"a long text", text("abcdefghijklmnopqrstuvwxyz"), 6},
      {"beyond ASCII", text("\xC3\xA4"), 7},
      {"false", boolean(false), 0},
      {"true", boolean(true), 1},
      {"#NULL!", error(FormulaErrorCode::Null), 1},
      {"#DIV/0!", error(FormulaErrorCode::DivisionByZero), 2},
      {"#N/A", error(FormulaErrorCode::NotAvailable), 7},
      {"a code above 127", error(static_cast<FormulaErrorCode>(200)), 200},
  };
}

}  // namespace Zorv::TestSupport
