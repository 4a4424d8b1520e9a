#include "tool/Output/Report.h"

#include <exception>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "support/RuledDocument.h"

namespace Zorv::Tool {
namespace {

CellIndex cell(unsigned long row) { return {RowIndex(row), ColumnIndex(0UL)}; }

class ReportTest : public testing::Test {
protected:
  /// Messages before the work.
  std::string findings() {
    auto const selection = _ruled.select();
    std::ostringstream err;
    Report(err, selection).sayFindings();
    return err.str();
  }

  /// Messages after the work, during which `work` is called.
  template <class Work>
  std::string summaryAfter(Work const& work) {
    auto const selection = _ruled.select();
    std::ostringstream err;
    Report report(err, selection);
    work(report);
    report.saySummary();
    _isClean = report.isClean();
    return err.str();
  }
  std::string summary() {
    return summaryAfter([](Report const&) {});
  }

  TestSupport::RuledDocument _ruled;
  bool _isClean = false;
};

TEST_F(ReportTest, ARuleThatIsNotResolvedIsToldWithItsPlaceAndReason) {
  _ruled.addUnresolvedRule("dataBar", "it draws");
  EXPECT_EQ(findings(), "book.xlsx: Sheet1!A1: rule 0: not resolved: data bar: it draws\n");
}

TEST_F(ReportTest, TheSameSentenceForManyRulesIsOneLine) {
  for (int i = 0; i < 148; ++i) {
    _ruled.addUnresolvedRule("dataBar", "it draws");
  }
  EXPECT_EQ(findings(),
            "book.xlsx: Sheet1!A1 and 147 more places: rules 0 to 147: not resolved: data bar: it "
            "draws\n");
}

TEST_F(ReportTest, DoubtsAreTold) {
  _ruled.addRule("A1:A9").doubts = {"refers to the unknown name \"Rate\"",
                                    "calls the unknown function FOO"};
  EXPECT_EQ(findings(),
            "book.xlsx: Sheet1!A1:A9: rule 0: in doubt: refers to the unknown name \"Rate\", calls "
            "the unknown function FOO\n");
  EXPECT_EQ(summary(), "book.xlsx: 1 rule read, 1 resolved, 0 not resolved; 1 in doubt\n");
  EXPECT_FALSE(_isClean);
}

TEST_F(ReportTest, TheSameFindingInManyPlacesIsOneLine) {
  _ruled.document.addFinding({.part = "a.xml", .sheet = "S", .range = "A1", .message = "is odd"});
  _ruled.document.addFinding({.part = "b.xml", .sheet = "T", .range = "A1", .message = "is odd"});
  _ruled.document.addFinding({.part = "", .sheet = "", .range = "", .message = "is strange"});
  EXPECT_EQ(findings(),
            "book.xlsx: a.xml: S: A1: is odd (and 1 more place)\n"
            "book.xlsx: is strange\n");
}

TEST_F(ReportTest, FailuresAreOneLineForARuleWithCountAndFirstCell) {
  _ruled.addRule("A1:A9");
  auto const text = summaryAfter([&](Report& report) {
    auto const& rule = _ruled.document.getRules()[0];
    for (unsigned long row = 2; row < 14; ++row) {
      report.addFailure(rule, cell(row), std::make_exception_ptr(std::runtime_error("too\nmuch")));
    }
    EXPECT_EQ(report.countFailedRules(), 1U);
    EXPECT_EQ(report.listProblems().size(), 1U);
  });
  EXPECT_EQ(text,
            "book.xlsx: Sheet1!A1:A9: rule 0: cannot be evaluated for 12 cells, first A3: too "
            "much\n"
            "book.xlsx: 1 rule read, 1 resolved, 0 not resolved; 1 not evaluated for every cell\n");
  EXPECT_FALSE(_isClean);
}

TEST_F(ReportTest, ALackOfMemoryIsNoFailureOfACell) {
  _ruled.addRule("A1");
  auto const selection = _ruled.select();
  std::ostringstream err;
  Report report(err, selection);
  EXPECT_THROW(report.addFailure(_ruled.document.getRules()[0], cell(0),
                                 std::make_exception_ptr(std::bad_alloc())),
               std::bad_alloc);
}

TEST_F(ReportTest, TheSummarySaysWhyARuleIsNotResolved) {
  _ruled.addUnresolvedRule("expression", "the formula is wrong");
  _ruled.addUnresolvedRule("expression", "the formula is missing");
  _ruled.addUnresolvedRule("iconSet", "it draws");
  EXPECT_EQ(summary(),
            "book.xlsx: 3 rules read, 0 resolved, 3 not resolved (2 formula rules: the formula is "
            "wrong, and others, 1 icon set: it draws)\n");
}

TEST_F(ReportTest, TheSummarySpeaksOfOtherReasonsOnlyIfThereAreSome) {
  _ruled.addUnresolvedRule("iconSet", "it draws");
  _ruled.addUnresolvedRule("iconSet", "it draws");
  EXPECT_EQ(summary(),
            "book.xlsx: 2 rules read, 0 resolved, 2 not resolved (2 icon sets: it draws)\n");
}

TEST_F(ReportTest, ARuleWithoutARangeIsToldWithItsSheet) {
  _ruled.addUnresolvedRule("iconSet", "the rule has no range").ranges.clear();
  EXPECT_EQ(findings(),
            "book.xlsx: Sheet1: rule 0: not resolved: icon set: the rule has no range\n");
}

TEST_F(ReportTest, HostileTextsAreMadeHarmless) {
  _ruled.file = "\x1B[31mbook.xlsx";
  _ruled.document.getSheets()[0].name = "\x1B]0;owned\x07";
  _ruled.addUnresolvedRule("\x1B[2J", std::string(2'000'000, '\n'));
  for (auto const& text : {findings(), summary()}) {
    EXPECT_EQ(text.find('\x1B'), std::string::npos);
    EXPECT_EQ(text.find('\x07'), std::string::npos);
    EXPECT_EQ(text.find('\n'), text.size() - 1);
    EXPECT_LT(text.size(), 1000U);
  }
}

TEST_F(ReportTest, AnUnknownFunctionIsNamedAndNotClean) {
  auto& rule = _ruled.addRule("A1");
  rule.doubts = {"calls the unknown function FOO"};
  rule.unknownFunctions = {"FOO"};
  EXPECT_EQ(summary(),
            "book.xlsx: 1 rule read, 1 resolved, 0 not resolved; 1 in doubt; functions not known: "
            "FOO\n");
  EXPECT_FALSE(_isClean);
}

TEST_F(ReportTest, ANoteOfTheLoaderLeavesItClean) {
  _ruled.document.addFinding(
      {.part = "", .sheet = "", .range = "", .message = "was calculated again", .isNote = true});
  static_cast<void>(summary());
  EXPECT_TRUE(_isClean);
}

TEST_F(ReportTest, IsCleanIfNothingIsOtherThanTheFileMeansIt) {
  _ruled.addRule("A1");
  static_cast<void>(summary());
  EXPECT_TRUE(_isClean);
  static_cast<void>(summaryAfter([](Report& report) { report.setIncomplete(); }));
  EXPECT_FALSE(_isClean);
  static_cast<void>(summaryAfter([](Report& report) { report.saySparse(0, 6'000'000); }));
  EXPECT_FALSE(_isClean);
  _ruled.document.addFinding({.part = "", .sheet = "", .range = "", .message = "is odd"});
  static_cast<void>(summary());
  EXPECT_FALSE(_isClean);
}

}  // namespace
}  // namespace Zorv::Tool
