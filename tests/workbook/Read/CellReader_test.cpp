#include "workbook/Read/CellReader.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/Evaluation.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using TestSupport::describeCell;
using TestSupport::WorkbookBuilder;

struct ValueCase {
  char const* cell;  ///< what stands at A1
  char const* expected;
};

class CellValues : public testing::TestWithParam<ValueCase> {};

void expectValue(std::string const& cell, char const* expected) {
  Document const document = WorkbookBuilder()
                                .setSharedStrings("<si><t>shared</t></si><si/>")
                                .setSheet("<row r='1'>" + cell + "</row>")
                                .load();
  EXPECT_EQ(describeCell(document, "A1"), expected) << cell;
  EXPECT_THAT(document.getFindings(), testing::IsEmpty());
}

TEST_P(CellValues, AreReadByTheirType) { expectValue(GetParam().cell, GetParam().expected); }

/// As nearly all programs write them.
TEST_P(CellValues, AreTheSameInQuotationMarks) {
  std::string cell = GetParam().cell;
  std::ranges::replace(cell, '\'', '"');
  expectValue(cell, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    CellReader, CellValues,
    testing::Values(
        ValueCase{"<c r='A1'><v>12.5</v></c>", "number 12.5"},
        ValueCase{"<c r='A1' t='n'><v> 1E2 </v></c>", "number 100"},
        ValueCase{"<c r='A1' t='s'><v>0</v></c>", "text shared"},
        ValueCase{"<c r='A1' t='s'><v>1</v></c>", "text "},
        ValueCase{"<c r='A1' t='b'><v>1</v></c>", "boolean TRUE"},
        ValueCase{"<c r='A1' t='b'><v>false</v></c>", "boolean FALSE"},
        ValueCase{"<c r='A1' t='e'><v>#DIV/0!</v></c>", "error #DIV/0!"},
        ValueCase{"<c r='A1' t='e'><v>#ref!</v></c>", "error #REF!"},
        ValueCase{"<c r='A1' t='d'><v>2026-11-21</v></c>", "number 46347"},
        ValueCase{"<c r='A1' t='str'><f>B1</f><v>result</v></c>", "text result"},
        ValueCase{"<c r='A1' t='str'><f>B1</f><v></v></c>", "text "},
        ValueCase{"<c r='A1' t='str'><f>B1</f></c>", "number 0"},
        ValueCase{"<c r='A1' t='str'><f>0/0</f><v>#DIV/0!</v></c>", "error #DIV/0!"},
        ValueCase{"<c r='A1' t='str'><v>#DIV/0!</v></c>", "text #DIV/0!"},
        ValueCase{"<c r='A1'><f>B1</f><v>7</v></c>", "number 7"},
        ValueCase{"<c r='A1'><v>7</v><f>B1</f></c>", "number 7"},
        ValueCase{"<c r='A1'><f t='shared' si='0'/><v>7</v></c>", "number 7"},
        ValueCase{"<c r='A1'><f>B1</f></c>", "number 0"},
        ValueCase{"<c r='A1' t='inlineStr'><is><t>inline</t></is></c>", "text inline"},
        ValueCase{"<c r='A1' t='inlineStr'><is><t/></is></c>", "text "},
        ValueCase{"<c r='A1' t='inlineStr'><is><t> a </t></is></c>", "text a"},
        ValueCase{"<c r='A1' t='inlineStr'><is><t xml:space='preserve'> a </t></is></c>",
                  "text  a "},
        ValueCase{"<c r='A1' t='inlineStr'><is><r><rPr><b/></rPr><t>two </t></r>"
                  "<r><t>runs</t></r><rPh sb='0' eb='1'><t>left out</t></rPh></is></c>",
                  "text tworuns"},
        ValueCase{"<c r='A1' t='inlineStr'><is><t>a_x0041_</t></is></c>", "text aA"},
        ValueCase{"<c r='A1' t='str'><v>&lt;&amp;&#x41;<![CDATA[<b>]]></v></c>", "text <&A<b>"},
        ValueCase{"<c r='A1'><v></v></c>", "none"}, ValueCase{"<c r='A1' s='0'/>", "none"},
        ValueCase{"<c r='A1'/>", "none"}));

TEST(CellReader, UnknownErrorsAndTypesAreToldAndReadAsTheNearestOnes) {
  Document const document = WorkbookBuilder()
                                .setSheet(
                                    "<row r='1'><c r='A1' t='e'><v>#UNHEARD-OF!</v></c>"
                                    "<c r='B1' t='number'><v>5</v></c></row>")
                                .load();
  EXPECT_EQ(describeCell(document, "A1"), "error #VALUE!");
  EXPECT_EQ(describeCell(document, "B1"), "number 5");
  ASSERT_EQ(document.getFindings().size(), 2U);
  EXPECT_EQ(document.getFindings()[0].message,
            "the error \"#UNHEARD-OF!\" is not known; it is read as #VALUE!");
  EXPECT_EQ(document.getFindings()[1].message,
            "the type \"number\" of the cell is not known; it is read as a number");
}

TEST(CellReader, OfACellGivenTwiceTheLastOneCounts) {
  Document const document = WorkbookBuilder()
                                .setSheet(
                                    "<row r='2'><c r='B2'><v>1</v></c><c r='A2'><v>2</v></c>"
                                    "<c r='B2'><v>3</v></c></row>"
                                    "<row r='1'><c r='A1'><v>4</v></c></row>"
                                    "<row r='2'><c r='A2'/></row>")
                                .load();
  EXPECT_EQ(describeCell(document, "B2"), "number 3");
  EXPECT_EQ(describeCell(document, "A1"), "number 4");
  EXPECT_EQ(describeCell(document, "A2"), "empty");
  ASSERT_EQ(document.getFindings().size(), 2U);
  EXPECT_EQ(document.getFindings()[0].range, "B2");
  EXPECT_EQ(document.getFindings()[0].message,
            "the file has the cell more than once; the last one counts");
  EXPECT_EQ(document.getFindings()[1].range, "A2");
}

TEST(CellReader, CopiesOfSharedTextsHaveALimitThatGrowsWithTheFile) {
  std::string cells;
  for (int count = 0; count < 100; ++count) {
    cells += "<c t='s'><v>0</v></c>";
  }
  auto const builder = WorkbookBuilder()
                           .setSharedStrings("<si><t>" + std::string(1'000, 'x') + "</t></si>")
                           .setSheet("<row>" + cells + "</row>");
  LoadOptions options;
  options.limits.sharedTextBytes = 50'000;
  options.limits.textBytesPerFileByte = 0;
  EXPECT_EQ(builder.loadMessage(options),
            "xl/worksheets/sheet1.xml: cell AY1: the texts that cells share have more than 50000 "
            "bytes in all cells together, which is the limit for a file of its size");
  options.limits.textBytesPerFileByte = 1'000;
  EXPECT_EQ(builder.loadMessage(options), "");
}

TEST(CellReader, RemembersWhetherAFormulaGaveTheValue) {
  Document const document = WorkbookBuilder()
                                .setSheet(
                                    "<row r='1'><c r='A1'><f>B1</f><v>1</v></c>"
                                    "<c r='B1'><v>1</v></c></row>")
                                .load();
  EXPECT_TRUE(document.getSheets()[0].table->findCell(0, 0)->hasFormula);
  EXPECT_FALSE(document.getSheets()[0].table->findCell(0, 1)->hasFormula);
}

TEST(CellReader, CellsAndRowsWithoutReferencesFollowOneAnother) {
  Document const document =
      WorkbookBuilder()
          .setSheet(
              "<row><c><v>1</v></c><c><v>2</v></c></row><row r='4'><c r='C4'><v>3</v></c>"
              "<c><v>4</v></c></row><row><c><v>5</v></c></row>")
          .load();
  EXPECT_EQ(describeCell(document, "A1"), "number 1");
  EXPECT_EQ(describeCell(document, "B1"), "number 2");
  EXPECT_EQ(describeCell(document, "C4"), "number 3");
  EXPECT_EQ(describeCell(document, "D4"), "number 4");
  EXPECT_EQ(describeCell(document, "A5"), "number 5");
}

TEST(CellReader, CellsOutOfOrderFindTheirPlaces) {
  Document const document = WorkbookBuilder()
                                .setSheet(
                                    "<row r='2'><c r='B2'><v>1</v></c><c r='A2'><v>2</v></c></row>"
                                    "<row r='1'><c r='A1'><v>3</v></c></row>")
                                .load();
  EXPECT_EQ(describeCell(document, "B2"), "number 1");
  EXPECT_EQ(describeCell(document, "A2"), "number 2");
  EXPECT_EQ(describeCell(document, "A1"), "number 3");
}

TEST(CellReader, StyledEmptyCellsExistAndStylesAreOneObject) {
  Document const document = WorkbookBuilder()
                                .setStyles(
                                    "<fonts><font><sz val='11'/></font><font><b/></font></fonts>"
                                    "<cellXfs><xf fontId='0'/><xf fontId='1'/></cellXfs>")
                                .setSheet(
                                    "<row r='1'><c r='A1' s='1'/><c r='B1' s='1'><v>1</v></c>"
                                    "<c r='C1' s='0'><v>1</v></c></row>")
                                .load();
  DOM::Table const& table = *document.getSheets()[0].table;
  EXPECT_EQ(describeCell(document, "A1"), "empty");
  ASSERT_TRUE(table.findCell(0, 0)->style);
  EXPECT_EQ(table.findCell(0, 0)->style, table.findCell(0, 1)->style);
  EXPECT_EQ((*table.findCell(0, 0)->style)->getRunProps()->bold, true);
  EXPECT_FALSE(table.findCell(0, 2)->style);
  EXPECT_EQ((*document.getDefaultCellStyle())->getRunProps()->fontSize, 11);
}

TEST(CellReader, DatesFollowTheWorkbooksDateSystem) {
  Document const document = WorkbookBuilder()
                                .setWorkbook("<workbookPr date1904='1'/>")
                                .setSheet("<row r='1'><c r='A1' t='d'><v>1904-01-02</v></c></row>")
                                .load();
  EXPECT_EQ(describeCell(document, "A1"), "number 1");
}

struct DoubtCase {
  char const* cell;
  char const* message;
};

class DoubtfulCells : public testing::TestWithParam<DoubtCase> {};

TEST_P(DoubtfulCells, AreReportedAndReadAsEmpty) {
  Document const document =
      WorkbookBuilder().setSheet("<row r='1'>" + std::string(GetParam().cell) + "</row>").load();
  ASSERT_EQ(document.getFindings().size(), 1U);
  Finding const& finding = document.getFindings()[0];
  EXPECT_EQ(finding.message, GetParam().message);
  EXPECT_EQ(finding.part, "xl/worksheets/sheet1.xml");
  EXPECT_EQ(finding.sheet, "Sheet1");
  EXPECT_EQ(finding.range, "A1");
}

INSTANTIATE_TEST_SUITE_P(
    CellReader, DoubtfulCells,
    testing::Values(DoubtCase{"<c r='A1'><v>1,5</v></c>",
                              "the value \"1,5\" is no number; the cell is read as empty"},
                    DoubtCase{"<c r='A1'><v>NaN</v></c>",
                              "the value \"NaN\" is no number; the cell is read as empty"},
                    DoubtCase{"<c r='A1' t='b'><v>yes</v></c>",
                              "the value \"yes\" is no truth value; the cell is read as empty"},
                    DoubtCase{"<c r='A1' t='d'><v>soon</v></c>",
                              "the value \"soon\" is no date; the cell is read as empty"},
                    DoubtCase{"<c r='A1' s='9'><v>1</v></c>",
                              "the cell has the style \"9\", which the file does not have"},
                    DoubtCase{"<c r='A1' s='-1'><v>1</v></c>",
                              "the cell has the style \"-1\", which the file does not have"}));

struct DamageCase {
  char const* rows;
  char const* message;
};

class DamagedCells : public testing::TestWithParam<DamageCase> {};

TEST_P(DamagedCells, AreRefusedWithTheirPlace) {
  EXPECT_EQ(WorkbookBuilder()
                .setSharedStrings("<si><t>only</t></si>")
                .setSheet(GetParam().rows)
                .loadMessage(),
            "xl/worksheets/sheet1.xml: " + std::string(GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(
    CellReader, DamagedCells,
    testing::Values(
        DamageCase{"<row r='1'><c r='XFE1'><v>1</v></c></row>",
                   "cell XFE1: is no cell of the sheet; the file is damaged"},
        DamageCase{"<row r='1'><c r='A1048577'><v>1</v></c></row>",
                   "cell A1048577: is no cell of the sheet; the file is damaged"},
        DamageCase{"<row r='1'><c r='?'><v>1</v></c></row>",
                   "cell ?: is no cell of the sheet; the file is damaged"},
        DamageCase{"<row r='1'/><row><c r=''><v>1</v></c></row>",
                   "a cell after row 2: is no cell of the sheet; the file is damaged"},
        DamageCase{"<row r=''/>",
                   "row \"\": is no number of a row; the file is damaged, fetch it anew"},
        DamageCase{"<row r='0'/>", "row 0: lies outside the sheet; the file is damaged"},
        DamageCase{"<row r='1048577'/>",
                   "row 1048577: lies outside the sheet; the file is damaged"},
        DamageCase{"<row r='1048576'/><row><c><v>1</v></c></row>",
                   "row 1048577: has more cells than a sheet has columns"},
        DamageCase{"<row r='1'><c r='A1' t='s'><v>1</v></c></row>",
                   "cell A1: refers to the shared text \"1\", but the file has 1; the file is "
                   "damaged"},
        DamageCase{"<row r='1'><c r='A1' t='s'><v>-1</v></c></row>",
                   "cell A1: refers to the shared text \"-1\", but the file has 1; the file is "
                   "damaged"}));

TEST(CellReader, MoreCellsThanTheLimitAreRefused) {
  LoadOptions options;
  options.limits.cells = 2;
  EXPECT_EQ(WorkbookBuilder()
                .setSheet("<row r='1'><c><v>1</v></c><c/><c><v>2</v></c></row>")
                .loadMessage(options),
            "");
  EXPECT_EQ(WorkbookBuilder()
                .setSheet("<row r='1'><c><v>1</v></c><c><v>2</v></c><c><v>3</v></c></row>")
                .loadMessage(options),
            "xl/worksheets/sheet1.xml: cell C1: the workbook has more than 2 cells, which is the "
            "limit");
}

TEST(CellReader, AFloodOfFindingsIsCutShort) {
  std::string cells;
  for (int count = 0; count < 1'200; ++count) {
    cells += "<c><v>x</v></c>";
  }
  Document const document = WorkbookBuilder().setSheet("<row>" + cells + "</row>").load();
  ASSERT_EQ(document.getFindings().size(), 1'001U);
  EXPECT_EQ(document.getFindings().back().message, "further findings are left out");
}

}  // namespace
}  // namespace Zorv::Workbook
