#include "tool/Commands/FormulaProbe.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "Formulas/ParseExpr.h"
#include "support/RuledDocument.h"

namespace Zorv::Tool {
namespace {

class FormulaProbeTest : public testing::Test {
protected:
  FormulaProbeTest() { _ruled.options.localeName = "en-US"; }

  void addRule(std::string const& ranges, std::string const& formula) {
    _ruled.addRule(ranges, 0,
                   DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::Equal,
                                                       Formulas::parseExpr(formula)));
  }

  /// Messages about rules that failed.
  std::string failuresOfProbe(std::uint64_t mostSteps = 500'000'000) {
    auto const selection = _ruled.select();
    std::ostringstream result;
    std::ostringstream messages;
    OutputBuffer out(result);
    Report report(messages, selection);
    WorkBudget budget({});
    probeFormulas({selection, Terminal{}, out, report, budget, true}, mostSteps);
    report.saySummary();
    return messages.str().substr(0, messages.str().rfind("book.xlsx: "));
  }

  TestSupport::RuledDocument _ruled;
};

TEST_F(FormulaProbeTest, TellsOfFormulasThatMeetALimit) {
  addRule("B2:B9", "SUM(SEQUENCE(1048576,16384))");
  addRule("C1", "SUM(A1:A9)");
  addRule("D1", "1/0");
  EXPECT_EQ(failuresOfProbe(),
            "book.xlsx: Sheet1!B2:B9: rule 0: cannot be evaluated for 1 cell, first B2: the "
            "formula needs more than 33554432 values at once\n");
}

TEST_F(FormulaProbeTest, EndsWhenFormulasHaveTakenTooManySteps) {
  addRule("A1", "SUM(SEQUENCE(10000))");
  addRule("A1", "SUM(SEQUENCE(1048576,16384))");
  EXPECT_EQ(failuresOfProbe(5'000), "");
  EXPECT_NE(failuresOfProbe(50'000), "");
}

}  // namespace
}  // namespace Zorv::Tool
