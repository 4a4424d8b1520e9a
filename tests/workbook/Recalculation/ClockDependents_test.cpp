#include "workbook/Recalculation/ClockDependents.h"

#include <chrono>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OfficeUtils/Clock.h"
#include "workbook/Evaluation.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::describeCell;
using TestSupport::holds;
using TestSupport::sheetData;
using TestSupport::WorkbookBuilder;

/// A cell with a formula and the result 1, which the file has stored.
std::string stored(std::string const& cell, std::string const& text,
                   std::string const& attributes = "") {
  return "<c r='" + cell + "'><f " + attributes + ">" + text + "</f><v>1</v></c>";
}

std::string row(std::string const& cells) { return "<row>" + cells + "</row>"; }

std::vector<std::string> rangedMessagesOf(Document const& document) {
  std::vector<std::string> messages;
  for (Finding const& finding : document.getFindings()) {
    messages.push_back(finding.range + ": " + finding.message);
  }
  return messages;
}

/// Loads on 21 November 2026, which is the serial number 46347.
class ClockCells : public testing::Test {
protected:
  OfficeUtils::ScopedClock clock{std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) +
                                 std::chrono::hours(12)};
};

TEST_F(ClockCells, AreCalculatedAgainWithAllThatDependsOnThem) {
  Document const document =
      WorkbookBuilder()
          .setWorkbook("",
                       "<definedNames><definedName name='Due'>Later+1</definedName>"
                       "<definedName name='Later'>today()+1</definedName></definedNames>")
          .addSheet("First", sheetData(row(stored("A1", "C1+1") + stored("B1", "5+5") +
                                           stored("C1", "TODAY()") + stored("D1", "due") +
                                           stored("E1", "SUM(Second!A1:B9)"))))
          .addSheet("Second", sheetData(row(stored("A1", "first!A1*2") + "<c r='B1'><v>3</v></c>" +
                                            stored("C1", "B1"))))
          .load();
  EXPECT_EQ(describeCell(document, "C1"), "number 46347");
  EXPECT_EQ(describeCell(document, "A1"), "number 46348");
  EXPECT_EQ(describeCell(document, "D1"), "number 46349");
  EXPECT_EQ(describeCell(document, "A1", 1), "number 92696");
  EXPECT_EQ(describeCell(document, "E1"), "number 92699");
  // What the file has stored for the others stays, even where it is wrong.
  EXPECT_EQ(describeCell(document, "B1"), "number 1");
  EXPECT_EQ(describeCell(document, "C1", 1), "number 1");
  EXPECT_THAT(
      rangedMessagesOf(document),
      ElementsAre(": 5 cells depend on the current date or time and were calculated again"));
}

TEST_F(ClockCells, HoldUnderARuleForToday) {
  auto const builder = WorkbookBuilder().setSheet(
      row(stored("A1", "TODAY()")),
      "<conditionalFormatting sqref='A1'><cfRule type='timePeriod' timePeriod='today'/>"
      "</conditionalFormatting>");
  EXPECT_TRUE(holds(builder.load(), 0, "A1"));
  OfficeUtils::ScopedClock const later(std::chrono::sys_days(std::chrono::year(2031) / 1 / 2) +
                                       std::chrono::hours(1));
  EXPECT_TRUE(holds(builder.load(), 0, "A1"));
}

TEST_F(ClockCells, OfASharedFormulaAreFoundOneByOne) {
  Document const document =
      WorkbookBuilder()
          .setSheet(row(stored("A1", "TODAY()") + stored("B1", "A1+1", "t='shared' si='0'")) +
                    row("<c r='A2'><v>7</v></c>" + stored("B2", "", "t='shared' si='0'")) +
                    row(stored("A3", "NOW()") + stored("B3", "", "t='shared' si='0'")))
          .load();
  EXPECT_EQ(describeCell(document, "B1"), "number 46348");
  EXPECT_EQ(describeCell(document, "B2"), "number 1");
  EXPECT_EQ(describeCell(document, "B3"), "number 46348.5");
}

TEST_F(ClockCells, OfAnArrayAreCalculatedTogether) {
  Document const document =
      WorkbookBuilder()
          .setSheet(row(stored("A1", "TODAY()+{1;2}", "t='array' ref='A1:A2'")) +
                    row("<c r='A2'><v>1</v></c>" + stored("B2", "A2+1")))
          .load();
  EXPECT_EQ(describeCell(document, "A1"), "number 46348");
  EXPECT_EQ(describeCell(document, "A2"), "number 46349");
  EXPECT_EQ(describeCell(document, "B2"), "number 46350");
}

TEST_F(ClockCells, WithoutResultsAreCalculatedAsAlwaysAndPassTheClockOn) {
  Document const document =
      WorkbookBuilder()
          .setSheet(row(stored("A1", "B1") + "<c r='B1'><f>C1</f></c>" + stored("C1", "TODAY()")))
          .load();
  EXPECT_EQ(describeCell(document, "B1"), "number 46347");
  EXPECT_EQ(describeCell(document, "A1"), "number 46347");
}

TEST_F(ClockCells, OfRandomFunctionsKeepTheResultOfTheFile) {
  Document const document = WorkbookBuilder()
                                .setSheet(row(stored("A1", "RANDBETWEEN(5,9)+TODAY()") +
                                              stored("B1", "A1") + stored("C1", "TODAY()")))
                                .load();
  EXPECT_EQ(describeCell(document, "A1"), "number 1");
  EXPECT_EQ(describeCell(document, "B1"), "number 1");
  EXPECT_EQ(describeCell(document, "C1"), "number 46347");
}

TEST_F(ClockCells, ThatCannotBeCalculatedKeepTheResultOfTheFileAndAreTold) {
  Document const document =
      WorkbookBuilder()
          .setSheet(row(stored("A1", "TODAY()+") + stored("B1", "UNHEARD(TODAY())") +
                        stored("C1", "TODAY()+D1") + stored("D1", "C1")))
          .load();
  for (char const* cell : {"A1", "B1", "D1"}) {
    EXPECT_EQ(describeCell(document, cell), "number 1") << cell;
  }
  // The circle is cut at D1.
  EXPECT_EQ(describeCell(document, "C1"), "number 46348");
  auto const messages = rangedMessagesOf(document);
  ASSERT_EQ(messages.size(), 4U);
  EXPECT_THAT(messages[0],
              testing::StartsWith("A1: the cell depends on the current date or time, but keeps the "
                                  "result of the file: the formula cannot be read: "));
  EXPECT_THAT(messages[1], testing::EndsWith("the formula needs its own result"));
  EXPECT_EQ(messages[2],
            "B1: the cell depends on the current date or time, but keeps the result of the file: "
            "the formula has functions that are not known: UNHEARD");
}

TEST_F(ClockCells, MayBeReachedByReferencesThatAreMadeAtRunTime) {
  std::string const indirect = stored("B1", "OFFSET(D1,0,-3)+1") +
                               stored("C1", "INDIRECT(\"A\"&amp;1)+2") + stored("E1", "B1+3");
  Document const document =
      WorkbookBuilder().setSheet(row(stored("A1", "TODAY()") + indirect)).load();
  EXPECT_EQ(describeCell(document, "B1"), "number 46348");
  EXPECT_EQ(describeCell(document, "C1"), "number 46349");
  EXPECT_EQ(describeCell(document, "E1"), "number 46351");
  // Without a clock there is nothing that they could lead to.
  Document const timeless = WorkbookBuilder().setSheet(row(stored("A1", "5") + indirect)).load();
  EXPECT_EQ(describeCell(timeless, "B1"), "number 1");
  EXPECT_THAT(timeless.getFindings(), IsEmpty());
}

TEST_F(ClockCells, AreOnlyThoseWhoseFormulasCallTheClock) {
  Document const document =
      WorkbookBuilder()
          .setSheet(row(stored("A1", "\"TODAY()\"") + stored("B1", "'TODAY()'!A1") +
                        stored("C1", "TODAY+1") + stored("D1", "SOON()")))
          .load();
  EXPECT_EQ(describeCell(document, "A1"), "number 1");
  EXPECT_THAT(document.getFindings(), IsEmpty());
}

TEST_F(ClockCells, OfALongChainAreFoundInEitherDirection) {
  constexpr int length = 20'000;
  std::string rows = row(stored("A1", "A2+1") + stored("B1", "TODAY()"));
  for (int number = 2; number < length; ++number) {
    rows += row(stored("A" + std::to_string(number), "A" + std::to_string(number + 1) + "+1") +
                stored("B" + std::to_string(number), "B" + std::to_string(number - 1) + "+1"));
  }
  rows += row(stored("A" + std::to_string(length), "TODAY()"));
  Document const document = WorkbookBuilder().setSheet(rows).load();
  EXPECT_EQ(describeCell(document, "A1"), "number 66346");
  EXPECT_EQ(describeCell(document, "B19999"), "number 66345");
}

TEST_F(ClockCells, AreFoundThroughALongChainOfNames) {
  std::string names;
  for (int number = 0; number < 100; ++number) {
    names += "<definedName name='Step_" + std::to_string(number) + "'>Step_" +
             std::to_string(number + 1) + "</definedName>";
  }
  auto const document =
      WorkbookBuilder()
          .setWorkbook("", "<definedNames>" + names +
                               "<definedName name='Step_100'>TODAY()</definedName>"
                               "</definedNames>")
          .setSheet(row(stored("A1", "ISNUMBER(Step_0)") + stored("B1", "Step_101")))
          .load();
  EXPECT_EQ(describeCell(document, "A1"), "boolean TRUE");
  EXPECT_EQ(describeCell(document, "B1"), "number 1");
}

TEST_F(ClockCells, SpendFromTheBudget) {
  std::string rows = row(stored("A1", "TODAY()"));
  for (int number = 2; number < 3'000; ++number) {
    rows +=
        row(stored("A" + std::to_string(number), "SUM(A$1:A" + std::to_string(number - 1) + ")"));
  }
  LoadOptions options;
  WorkBudget budget({.steps = 1'000'000});
  options.budget = &budget;
  EXPECT_THROW(static_cast<void>(WorkbookBuilder().setSheet(rows).load(options)),
               WorkBudgetExceeded);
}

}  // namespace
}  // namespace Zorv::Workbook
