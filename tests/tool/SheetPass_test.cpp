#include "tool/SheetPass.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <set>
#include <sstream>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "Formulas/ParseExpr.h"
#include "Utils/Exceptions.h"
#include "support/ForwardingValueContextProvider.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::Tool {
namespace {

using Positions = SheetPass::Positions;
using Rows = std::vector<unsigned long>;

/// Has no value for some rows.
class FailingProvider final : public TestSupport::ForwardingValueContextProvider {
public:
  FailingProvider(Workbook::Document const& document, std::set<unsigned long> failingRows)
      : ForwardingValueContextProvider(
            std::make_unique<Workbook::DocumentValueProvider>(document, "en-US", DOM::TimeZone())),
        _failingRows(std::move(failingRows)) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    if (_failingRows.count(cellInfo.getRowIndex()) > 0) {
      throw BaseRuntimeError("no value");
    }
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }

private:
  std::set<unsigned long> _failingRows;
};

/// Keeps the rows that are handed over; fails at one of them if told to.
class RecordingOutput final : public ResolveOutput {
public:
  void beginSheet(Workbook::Sheet const&) override {}
  void add(ResolvedCell const& cell) override {
    EXPECT_NE(cell.style, nullptr);
    EXPECT_EQ(cell.deciding.size(), 1U);
    rows.push_back(cell.cellInfo.getRowIndex());
    if (rows.back() == failingRow) {
      throw std::runtime_error("no room");
    }
  }
  void finish() override {}

  Rows rows;
  unsigned long failingRow = DOM::Table::rowCount;
};

class SheetPassTest : public testing::TestWithParam<std::tuple<Positions, unsigned>> {
protected:
  static constexpr unsigned long rowCount = 10'000;

  /// A column of rising numbers, all of which have the style of one rule.
  SheetPassTest() {
    auto& sheet = _document.getSheets().emplace_back();
    sheet.table = std::make_unique<DOM::Table>();
    for (unsigned long row = 0; row < rowCount; ++row) {
      sheet.table->setValue(
          row, 0, FormulaModel::FormulaNumber{FloatNumber(static_cast<double>(row) + 1.0)});
    }
    auto const style = UUID::generate();
    _document.getStyles().getTableStyles()[style] = DOM::NamedTableStyle("Good");
    sheet.table->addConditionalFormat(std::make_unique<DOM::ConditionalFormat const>(
        std::vector{sheet.table->toRangeByID(range)},
        DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::Greater,
                                            Formulas::parseExpr("0")),
        style));
    _rule.ranges = {range};
    _rule.format = sheet.table->getLiveConditionalFormats().front().get();
  }

  void resolve(std::set<unsigned long> const& failingRows) {
    auto const& table = *_document.getSheets().front().table;
    ConditionalFormatters::ConditionalFormattingPropsCalculator const calculator(
        std::make_unique<FailingProvider>(_document, failingRows));
    auto const styles = calculator.prepare(_document.getStyles(), table);
    SheetConditions const conditions(
        styles, calculator.getConditionalFormatRefs(table), {&_rule},
        [this](Workbook::Rule const&, DOM::CellInfo const& cell, char const* problem) {
          EXPECT_STREQ(problem, "no value");
          _failures.push_back(cell.getRowIndex());
        });
    std::ostringstream terminal;
    ProgressBar progress(terminal, false);
    SheetPass pass(table, styles, conditions, _output, progress);
    auto const [positions, threadCount] = GetParam();
    pass.resolve(range, positions, threadCount);
  }

  /// All rows, from the first to before the last, but some.
  static Rows rowsWithout(std::set<unsigned long> const& missing, unsigned long end = rowCount) {
    Rows rows(end);
    std::iota(rows.begin(), rows.end(), 0UL);
    std::erase_if(rows, [&](unsigned long row) { return missing.count(row) > 0; });
    return rows;
  }

  static constexpr TableRange range{0, 0, rowCount, 1};
  Workbook::Document _document;
  Workbook::Rule _rule;
  RecordingOutput _output;
  Rows _failures;
};

TEST_P(SheetPassTest, HandsOverEveryStyledCellInOrder) {
  resolve({});
  EXPECT_EQ(_output.rows, rowsWithout({}));
}

TEST_P(SheetPassTest, LeavesOutCellsThatCannotBeResolvedAndGoesOn) {
  std::set<unsigned long> const failing{0, 4'500, 4'501, rowCount - 1};
  resolve(failing);
  EXPECT_EQ(_output.rows, rowsWithout(failing));
  EXPECT_EQ(_failures, Rows(failing.begin(), failing.end()));
}

TEST_P(SheetPassTest, AFailureOfTheOutputEndsThePass) {
  _output.failingRow = 4'500;
  EXPECT_THROW(resolve({}), std::runtime_error);
  EXPECT_EQ(_output.rows, rowsWithout({}, 4'501));
}

INSTANTIATE_TEST_SUITE_P(Threads, SheetPassTest,
                         testing::Combine(testing::Values(Positions::Existing, Positions::All),
                                          testing::Values(1U, 2U, 7U)));

}  // namespace
}  // namespace Zorv::Tool
