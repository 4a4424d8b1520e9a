#include "ConditionalFormatters/WholeTable/CndFrmt_LineVerdicts.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "Formulas/OneTableDocument.h"
#include "Formulas/ParseExpr.h"
#include "support/Documents.h"
#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;

/// Has no other sheet than that of the table.
class OnlySheet final : public Formulas::OneTableDocument {
public:
  using OneTableDocument::OneTableDocument;

  [[nodiscard]] Formulas::TableContext const* findTableContext(
      std::string_view /*name*/) const override {
    throw std::runtime_error("no other sheet");
  }
};

class OnlySheetProvider final : public ForwardingValueContextProvider {
public:
  explicit OnlySheetProvider(DOM::Table const& table)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)),
        _contextProvider(table) {}

  [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const override {
    return _contextProvider;
  }

private:
  OnlySheet _contextProvider;
};

/// Three rows of three cells that hold 1. A document that changes in the middle of a pass, as it
/// must not, shows which conditions are asked again.
class LineVerdictsTest : public testing::Test {
protected:
  static constexpr TableRange cells{0, 0, 3, 3};

  LineVerdictsTest() {
    addStyle(styles, makeUUID(1));
    for (unsigned long row = 0; row < cells.endRow; ++row) {
      for (unsigned long column = 0; column < cells.endColumn; ++column) {
        table.setValue(row, column, number(1));
      }
    }
  }

  void addFormula(std::string const& formula, bool stops = false, TableRange const& range = cells) {
    addFormat(table, {range},
              DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::FormulaIsTrue,
                                                  Formulas::parseExpr(formula)),
              makeUUID(1), stops);
  }

  using Visit = std::function<void(ResolvedCell const&)>;

  /// How many formats hold in each cell, row by row; `x` where one failed.
  std::string resolveAll(Visit const& visit = [](ResolvedCell const& /*cell*/) {}) {
    ConditionalFormattingPropsCalculator const calculator(
        std::make_unique<OnlySheetProvider>(table));
    auto const resolver = calculator.prepare(styles, table);
    std::string counts;
    resolver.visit({.range = cells, .onFailure = TablePass::OnFailure::Skip},
                   [&](ResolvedCell const& cell) {
                     counts += cell.failure != nullptr ? "x" : std::to_string(cell.formats.size());
                     visit(cell);
                   });
    return counts;
  }

  DOM::Table table;
  DOM::Styles styles;
};

TEST_F(LineVerdictsTest, AFormulaOfFixedColumnsIsAskedOnceForEachRow) {
  table.setValue(0, 5, text("x"));
  table.setValue(1, 5, text("y"));
  table.setValue(2, 5, text("x"));
  addFormula("$F1=\"x\"");
  auto const swapTexts = [&](ResolvedCell const& cell) {
    unsigned long const row = cell.cellInfo.getRowIndex();
    table.setValue(row, 5, text(row == 1 ? "x" : "y"));
  };
  EXPECT_EQ(resolveAll(swapTexts), "111000111");
}

TEST_F(LineVerdictsTest, AFormulaOfFixedRowsIsAskedOnceForEachColumn) {
  table.setValue(5, 1, text("x"));
  addFormula("A$6=\"x\"");
  auto const swapTexts = [&](ResolvedCell const& cell) {
    unsigned long const column = cell.cellInfo.getColIndex();
    table.setValue(5, column, text(column == 1 ? "y" : "x"));
  };
  EXPECT_EQ(resolveAll(swapTexts), "010010010");
}

TEST_F(LineVerdictsTest, AFormulaThatKnowsTheColumnIsAskedForEachCell) {
  table.setValue(1, 5, number(1));
  addFormula("$F1+COLUMN()>2");
  EXPECT_EQ(resolveAll(), "001011001");
}

TEST_F(LineVerdictsTest, WhatIsFalseInOneRowIsAskedAgainInTheNext) {
  for (unsigned long row = 0; row < cells.endRow; ++row) {
    table.setValue(row, 5, number(static_cast<double>(row)));
  }
  addFormula("$F1=2");
  addFormula("$F1>=1");
  addFormula("A1=1");
  EXPECT_EQ(resolveAll(), "111222333");
}

TEST_F(LineVerdictsTest, AFormatThatStopsHidesLaterOnesInTheWholeRow) {
  table.setValue(1, 5, text("stop"));
  addFormula("$F1=\"stop\"", true);
  addFormula("TRUE");
  addFormula("$F1=\"\"");
  EXPECT_EQ(resolveAll(), "222111222");
}

TEST_F(LineVerdictsTest, FormatsOfAPartOfTheRowStayApart) {
  table.setValue(1, 5, number(1));
  addFormula("$F1=1", false, {0, 0, 3, 1});
  addFormula("$F1=0", false, {0, 1, 3, 3});
  EXPECT_EQ(resolveAll(), "011100011");
}

TEST_F(LineVerdictsTest, AnExceptionIsNoVerdictSoThatEachCellOfTheRowFails) {
  table.setValue(1, 5, number(1));
  addFormula("IF($F1=1,Other!$A1=1,FALSE)");
  EXPECT_EQ(resolveAll(), "000xxx000");
}

TEST_F(LineVerdictsTest, TextRulesOfACellShareTheTextOfItsNumber) {
  table.setValue(0, 0, number(12.5));
  table.setValue(0, 1, number(43));
  for (char const* const part : {"2.5", "4", "1"}) {
    addFormat(table, {cells},
              DOM::TextConditionalFormatOperator(DOM::TextConditionalFormatType::Contains,
                                                 std::string(part)),
              makeUUID(1));
  }
  EXPECT_EQ(resolveAll(), "211111111");
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
