// Whole files, tidied: what becomes of the rules, and of every byte.
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/Tidy/TidyError.h"
#include "analysis/Tidy/TidyFile.h"
#include "analysis/Tidy/WriteTidied.h"
#include "workbook/LoadWorkbook.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Analysis {
namespace {

using testing::HasSubstr;
using TestSupport::describe;
using TestSupport::tidyBytes;
using TestSupport::WorkbookBuilder;

constexpr char const* styles =
    R"(<dxfs count="4"><dxf><fill><patternFill><bgColor rgb="FFFF0000"/></patternFill></fill></dxf>)"
    R"(<dxf><font><b/></font></dxf>)"
    R"(<dxf><fill><patternFill><bgColor rgb="FFFF0000"/></patternFill></fill></dxf>)"
    R"(<dxf><fill><patternFill><bgColor rgb="FF00FF00"/></patternFill></fill></dxf></dxfs>)";

std::string format(std::string const& ranges, std::string const& rules) {
  return "<conditionalFormatting sqref=\"" + ranges + "\">" + rules + "</conditionalFormatting>";
}

std::string greater(std::string const& formula, int priority, int dxf = 0,
                    std::string const& more = "") {
  return "<cfRule type=\"cellIs\" operator=\"greaterThan\" priority=\"" + std::to_string(priority) +
         "\" dxfId=\"" + std::to_string(dxf) + "\"" + more + "><formula>" + formula +
         "</formula></cfRule>";
}

std::string expression(std::string const& formula, int priority, int dxf = 0) {
  return "<cfRule type=\"expression\" priority=\"" + std::to_string(priority) + "\" dxfId=\"" +
         std::to_string(dxf) + "\"><formula>" + formula + "</formula></cfRule>";
}

std::string makeFile(std::string const& formats) {
  constexpr char const* rows = R"(<row r="1"><c r="A1"><v>3</v></c><c r="B1"><v>7</v></c></row>)"
                               R"(<row r="5"><c r="A5"><v>9</v></c><c r="B5"><v>1</v></c></row>)"
                               R"(<row r="9"><c r="A9"><v>5</v></c><c r="C9"><v>8</v></c></row>)";
  return WorkbookBuilder().setStyles(styles).setSheet(rows, formats).makeBytes();
}

/// Text left between the cells and the end of the sheet's part.
std::string formatsAfter(TestSupport::TidiedFile const& file) {
  std::string const& part = file.partsAfter.at("xl/worksheets/sheet1.xml");
  constexpr std::string_view mark = "</sheetData>";
  auto const begin = part.find(mark) + mark.size();
  return part.substr(begin, part.find("</worksheet>") - begin);
}

TEST(Tidy, JoinsFragmentsAndLeavesEveryOtherByte) {
  auto const file = tidyBytes(makeFile("<!-- a -->" + format("A1:A4", greater("5", 2)) + "\n " +
                                       format("B1:B9", expression("$A1=3", 3, 1)) +
                                       format("A5:A9", greater("5", 1, 2)) + "<!-- z -->"));
  EXPECT_EQ(describe(file.plan), "2+0 A1:A9");
  EXPECT_EQ(formatsAfter(file), "<!-- a -->\n " + format("B1:B9", expression("$A1=3", 3, 1)) +
                                    format("A1:A9", greater("5", 1, 2)) + "<!-- z -->");
  auto before = file.partsBefore;
  auto after = file.partsAfter;
  before.erase("xl/worksheets/sheet1.xml");
  after.erase("xl/worksheets/sheet1.xml");
  EXPECT_EQ(before, after);
  EXPECT_EQ(file.after.getRules().size(), 2U);
}

TEST(Tidy, WritesRelativeFormulasForTheNewBase) {
  auto const file = tidyBytes(makeFile(format("C5:C9", expression("AND(A5&gt;1,$B5&lt;B$1)", 1)) +
                                       format("C1:C4", expression("AND(A1&gt;1,$B1&lt;B$1)", 2))));
  EXPECT_EQ(describe(file.plan), "0+1 C1:C9");
  EXPECT_EQ(formatsAfter(file), format("C1:C9", expression("AND(A1&gt;1,$B1&lt;B$1)", 1)));
}

TEST(Tidy, LetsTheRuleLeadWhoseFormulaCanBeWritten) {
  // Two columns to the left of column B is column XFD, which the text of column C's formula cannot
  // be moved to.
  auto const file = tidyBytes(makeFile(format("C1:C9", expression("A1&gt;1", 1)) +
                                       format("B1:B9", expression("XFD1&gt;1", 2))));
  EXPECT_EQ(describe(file.plan), "1+0 B1:C9");
  EXPECT_EQ(formatsAfter(file), format("B1:C9", expression("XFD1&gt;1", 2)));
}

TEST(Tidy, MovesNoFormulaWithEscapedCharacters) {
  // The file means the letter A; its text with moved references would not write it so again.
  auto const file = tidyBytes(makeFile(format("A5:A9", expression("A5=\"_x0041_\"", 1)) +
                                       format("A1:A4", expression("A1=\"_x0041_\"", 2))));
  EXPECT_EQ(describe(file.plan), "1+0 A1:A9");
  EXPECT_EQ(formatsAfter(file), format("A1:A9", expression("A1=\"_x0041_\"", 2)));
}

TEST(Tidy, ComparesFormulasByWhatTheySayOnEachCell) {
  EXPECT_EQ(describe(tidyBytes(makeFile(format("A1:A4", greater("B1", 1)) +
                                        format("A5:A9", greater("B5", 2))))
                         .plan),
            "0+1 A1:A9");
  EXPECT_EQ(describe(tidyBytes(makeFile(format("A1:A4", greater("B1", 1)) +
                                        format("A5:A9", greater("B1", 2))))
                         .plan),
            "");
  EXPECT_EQ(describe(tidyBytes(makeFile(format("A1:A4", greater("$B$1", 1)) +
                                        format("A5:A9", greater(" $b$1", 2))))
                         .plan),
            "0+1 A1:A9");
}

TEST(Tidy, ComparesEverythingElseThatARuleSays) {
  std::vector<std::string> const others = {
      greater("5", 2, 1),
      greater("5", 2, 3),
      greater("5", 2, 99),
      greater("5", 2, 0, " stopIfTrue=\"1\""),
      "<cfRule type=\"cellIs\" operator=\"lessThan\" priority=\"2\" "
      "dxfId=\"0\"><formula>5</formula>"
      "</cfRule>",
      "<cfRule type=\"cellIs\" operator=\"greaterThan\" priority=\"2\"><formula>5</formula>"
      "</cfRule>"};
  for (std::string const& other : others) {
    EXPECT_EQ(
        describe(
            tidyBytes(makeFile(format("A1:A4", greater("5", 1)) + format("A5:A9", other))).plan),
        "")
        << other;
  }
}

TEST(Tidy, ComparesStylesByWhatTheySay) {
  auto const tidy = [](std::string const& first, std::string const& second) {
    return describe(tidyBytes(WorkbookBuilder()
                                  .setStyles("<dxfs>" + first + second + "</dxfs>")
                                  .setSheet("", format("A1:A4", greater("5", 1)) +
                                                    format("A5:A9", greater("5", 2, 1)))
                                  .makeBytes())
                        .plan);
  };
  EXPECT_EQ(tidy(R"(<dxf><border><bottom style="thin"/><vertical/><horizontal/></border></dxf>)",
                 R"(<dxf> <border><bottom style='thin'></bottom></border></dxf>)"),
            "0+1 A1:A9");
  EXPECT_EQ(tidy(R"(<dxf><font><color theme="1" tint="0.5"/></font></dxf>)",
                 R"(<dxf><font><color tint="0.5" theme="1"/></font></dxf>)"),
            "0+1 A1:A9");
  EXPECT_EQ(tidy(R"(<dxf><font><color theme="1" tint="0.5"/></font></dxf>)",
                 R"(<dxf><font><color theme="1"/></font></dxf>)"),
            "");
  // What the loader does not know may mean something to other programs.
  EXPECT_EQ(tidy(R"(<dxf><font><b/></font></dxf>)",
                 R"(<dxf><font><b/></font><x:new xmlns:x="urn:x"/></dxf>)"),
            "");
}

TEST(Tidy, DividesAnElementWhoseRulesGetDifferentRanges) {
  auto const file =
      tidyBytes(makeFile(format("A1:A4", greater("5", 1) + expression("$B1=7", 2, 1)) +
                         format("A5:A9", greater("5", 3))));
  EXPECT_EQ(describe(file.plan), "0+2 A1:A9");
  EXPECT_EQ(formatsAfter(file),
            format("A1:A9", greater("5", 1)) + format("A1:A4", expression("$B1=7", 2, 1)));
}

TEST(Tidy, KeepsAnElementTogetherWhoseRulesGetTheSameRanges) {
  auto const file =
      tidyBytes(makeFile(format("A1:A4", greater("5", 1) + " " + expression("$B1=7", 2, 1)) +
                         format("A5:A9", greater("5", 3) + expression("$B5=7", 4, 1))));
  EXPECT_EQ(formatsAfter(file), format("A1:A9", greater("5", 1) + " " + expression("$B1=7", 2, 1)));
}

TEST(Tidy, DropsExactDuplicatesOfRulesThatLookAtTheirRanges) {
  std::string const top = R"(<cfRule type="top10" rank="2" dxfId="0" priority=)";
  std::string const scale =
      R"(<cfRule type="colorScale" priority="7"><colorScale><cfvo type="min"/><cfvo type="max"/>)"
      R"(<color rgb="FFFF0000"/><color rgb="FF00FF00"/></colorScale></cfRule>)";
  auto const file =
      tidyBytes(makeFile(format("A1:A9", top + "\"1\"/>") + format("A1:A9", top + "\"2\"/>") +
                         format("A1:A5", top + "\"3\"/>") + format("B1:B9", scale) +
                         format("B1:B9", scale) + format("C1:C9", scale)));
  EXPECT_EQ(describe(file.plan), "dead 1 by 0, dead 4 by 3");
  EXPECT_EQ(formatsAfter(file), format("A1:A9", top + "\"1\"/>") +
                                    format("A1:A5", top + "\"3\"/>") + format("B1:B9", scale) +
                                    format("C1:C9", scale));
}

/// A data bar whose second half is in the extension list.
std::string bar(std::string const& id) {
  return R"(<cfRule type="dataBar" priority="1"><dataBar><cfvo type="min"/><cfvo type="max"/>)"
         R"(<color rgb="FF638EC6"/></dataBar><extLst><ext uri="{B025F937-C7B1-47D3-B67F-A62EFF666E3E}")"
         R"( xmlns:x14="http://schemas.microsoft.com/office/spreadsheetml/2009/9/main"><x14:id>)" +
         id + "</x14:id></ext></extLst></cfRule>";
}

std::string secondHalf(std::string const& id, std::string const& ranges, int length) {
  return "<x14:conditionalFormatting xmlns:xm=\"http://schemas.microsoft.com/office/excel/2006/"
         "main\"><x14:cfRule type=\"dataBar\" id=\"" +
         id + "\"><x14:dataBar maxLength=\"" + std::to_string(length) +
         "\"><x14:cfvo type=\"autoMin\"/><x14:cfvo type=\"autoMax\"/></x14:dataBar></x14:cfRule>"
         "<xm:sqref>" +
         ranges + "</xm:sqref></x14:conditionalFormatting>";
}

std::string extensions(std::string const& formats) {
  return "<extLst><ext uri=\"{78C0D931-6437-407d-A8EE-F0AAD7539E65}\" xmlns:x14=\"http://"
         "schemas.microsoft.com/office/spreadsheetml/2009/9/main\"><x14:conditionalFormattings>" +
         formats + "</x14:conditionalFormattings></ext></extLst>";
}

TEST(Tidy, DropsADuplicateBarWithBothItsHalves) {
  auto const file = tidyBytes(makeFile(
      format("A1:A9", bar("{1}")) + format("A1:A9", bar("{2}")) + format("A1:A9", bar("{3}")) +
      extensions(secondHalf("{1}", "A1:A9", 80) + secondHalf("{2}", "A1:A9", 80) +
                 secondHalf("{3}", "A1:A9", 90))));
  EXPECT_EQ(describe(file.plan), "dead 1 by 0");
  EXPECT_EQ(formatsAfter(file),
            format("A1:A9", bar("{1}")) + format("A1:A9", bar("{3}")) +
                extensions(secondHalf("{1}", "A1:A9", 80) + secondHalf("{3}", "A1:A9", 90)));
}

std::string later(std::string const& id, int priority, std::string const& formula,
                  std::string const& ranges, std::string const& colour = "FFFF0000") {
  return "<x14:conditionalFormatting xmlns:xm=\"http://schemas.microsoft.com/office/excel/2006/"
         "main\"><x14:cfRule type=\"expression\" priority=\"" +
         std::to_string(priority) + "\" id=\"" + id + "\"><xm:f>" + formula +
         "</xm:f><x14:dxf><fill><patternFill><bgColor rgb=\"" + colour +
         "\"/></patternFill></fill></x14:dxf></x14:cfRule><xm:sqref>" + ranges +
         "</xm:sqref></x14:conditionalFormatting>";
}

TEST(Tidy, JoinsRulesOfTheExtensionList) {
  auto const file = tidyBytes(
      makeFile(extensions(later("{1}", 1, "A5=9", "A5:A9") + later("{2}", 2, "A1=9", "A1:A4") +
                          later("{3}", 3, "A1=9", "A1:A4", "FF00FF00"))));
  EXPECT_EQ(describe(file.plan), "0+1 A1:A9");
  EXPECT_EQ(formatsAfter(file), extensions(later("{1}", 1, "A1=9", "A1:A9") +
                                           later("{3}", 3, "A1=9", "A1:A4", "FF00FF00")));
}

TEST(Tidy, DropsRulesWhoseFormulaIsAlwaysAnError) {
  auto const file = tidyBytes(makeFile(format("A1:A9", expression("$A1&gt;#REF!", 1)) +
                                       format("A1:A9", greater("#REF!", 2))));
  EXPECT_EQ(describe(file.plan), "dead 0");
  EXPECT_EQ(formatsAfter(file), format("A1:A9", greater("#REF!", 2)));
  EXPECT_EQ(describe(tidyBytes(makeFile(format("A1:A9", expression("#REF!", 1)))).plan), "dead 0");
  EXPECT_EQ(describe(tidyBytes(makeFile(extensions(later("{1}", 1, "#REF!", "A1:A9")))).plan), "");
}

TEST(Tidy, LeavesRulesOfPivotTablesAndDamagedRulesAlone) {
  std::string const pivot = "<conditionalFormatting pivot=\"1\" sqref=\"A1:A4\">" +
                            greater("5", 1) + "</conditionalFormatting>";
  EXPECT_EQ(describe(tidyBytes(makeFile(pivot + format("A5:A9", greater("5", 2)))).plan), "");
  EXPECT_EQ(describe(tidyBytes(makeFile(format("A1:A4", greater("(", 1)) +
                                        format("A1:A4", greater("(", 2))))
                         .plan),
            "");
}

TEST(Tidy, MovesNothingPastADamagedRule) {
  EXPECT_EQ(
      describe(tidyBytes(makeFile(format("A1:A5", greater("5", 1)) + format("A5", greater("(", 2)) +
                                  format("A5:A9", greater("5", 3))))
                   .plan),
      "0+2 A1:A9");
  EXPECT_EQ(describe(tidyBytes(makeFile(format("A1:A5", greater("5", 1)) +
                                        format("A5:A6", greater("(", 2)) +
                                        format("A6:A9", greater("5", 3))))
                         .plan),
            "");
}

TEST(Tidy, KeepsAPartWithAByteOrderMarkAndLeavesOneInUtf16) {
  std::string const formats = format("A1:A4", greater("5", 1)) + format("A5:A9", greater("5", 2));
  auto parts = WorkbookBuilder().setStyles(styles).setSheet("", formats).makeParts();
  std::string& sheet = parts["xl/worksheets/sheet1.xml"];
  std::string const plain = sheet;
  sheet = "\xEF\xBB\xBF" + plain;
  auto const file = tidyBytes(TestSupport::makeArchive(parts));
  EXPECT_EQ(describe(file.plan), "0+1 A1:A9");
  EXPECT_THAT(file.partsAfter.at("xl/worksheets/sheet1.xml"),
              testing::AllOf(testing::StartsWith("\xEF\xBB\xBF<?xml"),
                             HasSubstr(format("A1:A9", greater("5", 1)))));

  sheet = "\xFF\xFE";
  for (char const c : plain.substr(plain.find("?>") + 2)) {
    sheet += c;
    sheet += '\0';
  }
  auto const wide = tidyBytes(TestSupport::makeArchive(parts));
  EXPECT_TRUE(wide.plan.changesNothing());
  EXPECT_THAT(wide.plan.sheets.at(0).untouchedReason, HasSubstr("UTF-16"));
  EXPECT_EQ(wide.partsBefore, wide.partsAfter);
}

TEST(Tidy, CountsRulesBeforeAndAfter) {
  auto const file =
      tidyBytes(makeFile(format("A1:A4", greater("5", 1)) + format("A5:A9", greater("5", 2)) +
                         format("A2", greater("5", 3))));
  ASSERT_EQ(file.plan.sheets.size(), 1U);
  EXPECT_EQ(file.plan.sheets[0].ruleCount, 3U);
  EXPECT_EQ(file.plan.sheets[0].countRulesAfter(), 1U);
}

TEST(Tidy, SaysThatASignatureWillNotHold) {
  auto const makeSigned = [](std::string const& rules) {
    auto parts = WorkbookBuilder().setSheet("", rules).makeParts();
    std::string& relationships = parts.at("_rels/.rels");
    relationships.insert(
        relationships.find("</Relationships>"),
        "<Relationship Id='s' Type='http://schemas.openxmlformats.org/package/2006/relationships/"
        "digital-signature/origin' Target='_xmlsignatures/origin.sigs'/>");
    parts["_xmlsignatures/origin.sigs"] = "";
    return TestSupport::makeArchive(parts);
  };
  std::string const fragments = format("A1:A4", greater("5", 1)) + format("A5:A9", greater("5", 2));
  auto const tidied = TestSupport::tidyBytes(makeSigned(fragments));
  EXPECT_TRUE(tidied.plan.breaksSignature);
  EXPECT_TRUE(tidied.partsAfter.contains("_xmlsignatures/origin.sigs"));
  EXPECT_FALSE(
      TestSupport::tidyBytes(makeSigned(format("A1", greater("5", 1)))).plan.breaksSignature);
  EXPECT_FALSE(TestSupport::tidyBytes(makeFile(fragments)).plan.breaksSignature);
}

/// A file that would be tidied, and the place of the result.
class TidyRefusal : public testing::Test {
protected:
  std::string bytes = makeFile(format("A1:A4", greater("5", 1)) + format("A5:A9", greater("5", 2)));
  TestSupport::TemporaryFile file{bytes};
  Workbook::Document document = Workbook::loadWorkbook(file.getPath());
  TidyPlan plan = planTidy(file.getPath(), document, {});
  std::filesystem::path target = file.getPath().string() + ".out";

  ~TidyRefusal() override { std::filesystem::remove(target); }

  std::string write() {
    try {
      writeTidied(file.getPath(), document, plan, {}, {.target = target});
    } catch (BaseRuntimeError const& error) {
      return error.what();
    }
    return {};
  }

  /// Files beside the target that begin like those that are written first.
  [[nodiscard]] int countLeftovers() const {
    int count = 0;
    for (auto const& entry : std::filesystem::directory_iterator(target.parent_path())) {
      count += entry.path().filename().string().starts_with("." + target.filename().string());
    }
    return count;
  }
};

TEST_F(TidyRefusal, WritesNothingIfACellWouldLookDifferent) {
  auto& part = plan.contents.at("xl/worksheets/sheet1.xml");
  part.replace(part.find("A1:A9"), 5, "A1:A4");
  EXPECT_THAT(write(), HasSubstr("A5 on the sheet \"Sheet1\" would look different"));
  EXPECT_FALSE(std::filesystem::exists(target));
  EXPECT_EQ(countLeftovers(), 0);
}

TEST_F(TidyRefusal, WritesNothingIfTheRulesAreNotThoseOfThePlan) {
  auto& part = plan.contents.at("xl/worksheets/sheet1.xml");
  part.insert(part.find("<conditionalFormatting"), format("A1", greater("5", 9)));
  EXPECT_THAT(write(), HasSubstr("other rules than planned"));
  EXPECT_FALSE(std::filesystem::exists(target));
}

TEST_F(TidyRefusal, WritesNothingIfTheNewFileCannotBeRead) {
  plan.contents.at("xl/worksheets/sheet1.xml").resize(100);
  EXPECT_THAT(write(), HasSubstr("cut off or damaged"));
  EXPECT_FALSE(std::filesystem::exists(target));
  EXPECT_EQ(countLeftovers(), 0);
}

TEST_F(TidyRefusal, ReplacesTheFileItselfWithoutBeingAskedTwice) {
  target = file.getPath();
  EXPECT_EQ(write(), "");
  EXPECT_EQ(Workbook::loadWorkbook(target).getRules().size(), 1U);
  target += ".none";
}

}  // namespace
}  // namespace Zorv::Analysis
