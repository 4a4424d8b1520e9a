// Workbooks that many different programs wrote, with verdicts of other programs on them; see
// tests/workbooks/README.md.
#include <cctype>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "DOM/A1Notation.h"
#include "OfficeUtils/Clock.h"
#include "workbook/DocumentValueProvider.h"
#include "workbook/Evaluation.h"
#include "workbook/LoadWorkbook.h"

namespace Zorv::Workbook {
namespace {

struct RealFile {
  char const* name;
  std::size_t rules;
  std::size_t verdicts;
  /// How many verdicts of which rule the library gives otherwise, on purpose.
  std::map<std::size_t, std::size_t> otherwise{};
};

std::filesystem::path folder() { return WORKBOOKS_FOLDER; }

struct Verdict {
  std::string sheet;
  std::string cell;
  std::size_t rule = 0;
  std::string type;
  bool holds = false;
};

std::vector<Verdict> readVerdicts(std::string const& file) {
  std::ifstream stream(folder() / "expected" / (file + ".tsv"));
  std::vector<Verdict> verdicts;
  std::string line;
  std::getline(stream, line);
  while (std::getline(stream, line)) {
    std::istringstream fields(line);
    Verdict verdict;
    std::string rule;
    std::string ignored;
    std::string holds;
    std::getline(fields, verdict.sheet, '\t');
    std::getline(fields, verdict.cell, '\t');
    std::getline(fields, rule, '\t');
    std::getline(fields, verdict.type, '\t');
    std::getline(fields, ignored, '\t');
    std::getline(fields, holds, '\t');
    verdict.rule = std::stoul(rule);
    verdict.holds = holds == "1";
    verdicts.push_back(std::move(verdict));
  }
  return verdicts;
}

class RealWorkbooks : public testing::TestWithParam<RealFile> {
protected:
  // What the date-dependent verdicts were taken on.
  OfficeUtils::ScopedClock clock{std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) +
                                 std::chrono::hours(12)};
};

TEST_P(RealWorkbooks, AreReadWithAllTheirRules) {
  Document const document = loadWorkbook(folder() / GetParam().name);
  EXPECT_EQ(document.getRules().size(), GetParam().rules);
  for (Rule const& rule : document.getRules()) {
    bool const isVisual =
        rule.type == "colorScale" || rule.type == "dataBar" || rule.type == "iconSet";
    EXPECT_EQ(rule.visual != nullptr, isVisual)
        << "rule " << rule.number << " (" << rule.type << "): " << rule.unresolvedReason;
    EXPECT_EQ(rule.format == nullptr, isVisual)
        << "rule " << rule.number << " (" << rule.type << "): " << rule.unresolvedReason;
  }
  for (Finding const& finding : document.getFindings()) {
    if (finding.message.ends_with("on the current date or time and were calculated again")) {
      continue;
    }
    ADD_FAILURE() << finding.part << " " << finding.sheet << " " << finding.range << ": "
                  << finding.message;
  }
}

/// How many verdicts of which rule the document gives otherwise; unless rules are exempt, each of
/// them is a failure.
std::map<std::size_t, std::size_t> countDifferences(
    Document const& document, std::vector<Verdict> const& verdicts,
    std::map<std::size_t, std::size_t> const& exemptRules) {
  DocumentValueProvider const provider(document, "en-US", DOM::TimeZone());
  std::map<std::size_t, std::unique_ptr<ConditionalFormatters::Operator>> operators;
  std::map<std::size_t, std::size_t> otherwise;
  for (Verdict const& verdict : verdicts) {
    Rule const* const found = document.findRule(verdict.rule);
    EXPECT_NE(found, nullptr);
    Rule const& rule = *found;
    DOM::Table const& table = *document.getSheets()[rule.sheet].table;
    EXPECT_EQ(document.getSheets()[rule.sheet].name, verdict.sheet);
    EXPECT_EQ(rule.type, verdict.type);
    EXPECT_TRUE(rule.format) << rule.unresolvedReason;
    auto& condition = operators[verdict.rule];
    if (!condition) {
      condition = ConditionalFormatters::OperatorsFactory(provider, table)
                      .create({rule.ranges, *rule.format});
    }
    CellIndex const place = DOM::A1Notation::parseCell(verdict.cell).value();
    auto const info = table.getCellInfo(place.getRow().get(), place.getColumn().get());
    if ((*condition)({provider.getCellValue(info), place}) != verdict.holds) {
      ++otherwise[verdict.rule];
      EXPECT_TRUE(exemptRules.contains(verdict.rule))
          << verdict.sheet << " " << verdict.cell << ", rule " << verdict.rule << " ("
          << verdict.type << " " << testing::PrintToString(rule.formulas)
          << "): expected to hold: " << verdict.holds;
    }
  }
  return otherwise;
}

TEST_P(RealWorkbooks, AgreeWithOtherProgramsExceptOnPurpose) {
  auto const verdicts = readVerdicts(GetParam().name);
  EXPECT_EQ(verdicts.size(), GetParam().verdicts);
  EXPECT_EQ(
      countDifferences(loadWorkbook(folder() / GetParam().name), verdicts, GetParam().otherwise),
      GetParam().otherwise);
}

TEST_P(RealWorkbooks, AgreeWithOtherProgramsByTheirSemantics) {
  Document const document =
      loadWorkbook(folder() / GetParam().name, {.semantics = Semantics::Widespread});
  countDifferences(document, readVerdicts(GetParam().name), {});
}

TEST(RealWorkbook, FormulasThatItsProgramStoredWithoutResultsAreCalculated) {
  Document const document = loadWorkbook(folder() / "tLists4_complexRange.xlsx");
  EXPECT_EQ(TestSupport::describeCell(document, "E18"),
            "text 4-976 Sugarloaf Hwy Suite 103");  // "4-976 Sugarloaf Hwy"&" "&"Suite 103"
  EXPECT_EQ(TestSupport::describeCell(document, "H14"), "number -0.1");  // G13-$J$4
}

INSTANTIATE_TEST_SUITE_P(
    Corpus, RealWorkbooks,
    testing::Values(RealFile{"acr_checklist.en.xlsx", 31, 916},
                    RealFile{"tLists4_complexRange.xlsx", 2, 19},
                    RealFile{"ConditionalFormattingOrder.xlsx", 3, 3},
                    RealFile{"ConditionalFormattingConditions.xlsx", 18, 41},
                    RealFile{"issue.4318.xlsx", 6, 96}, RealFile{"Risk_Register.xlsx", 5, 105},
                    // A date of the same month in another year.
                    RealFile{"ConditionalFormattingSamples.xlsx", 42, 786, {{0, 1}}},
                    RealFile{"NewStyleConditionalFormattings.xlsx", 21, 48},
                    RealFile{"WithConditionalFormatting.xlsx", 5, 31},
                    // An empty cell is of its own kind and no number.
                    RealFile{"conditional_formatting_multiple_ranges.xlsx", 1, 26, {{0, 3}}},
                    RealFile{"conditional_formatting_with_formula_on_second_sheet.xlsx", 6, 5},
                    RealFile{"test_conditional_formatting.xlsx", 4, 2},
                    RealFile{"Styles.xlsx", 5, 9}, RealFile{"yearly_calendar.xlsx", 12, 0},
                    RealFile{"cond_format15.xlsx", 2, 2},
                    // Deviations from the average never hold.
                    RealFile{"conditional-formatting.xlsx", 30, 129, {{24, 2}, {25, 2}, {26, 1}}}),
    [](testing::TestParamInfo<RealFile> const& file) {
      std::string name;
      for (char const character : std::string(file.param.name)) {
        name += std::isalnum(static_cast<unsigned char>(character)) != 0 ? character : '_';
      }
      return name;
    });

}  // namespace
}  // namespace Zorv::Workbook
