#include "workbook/LoadWorkbook.h"

#include <span>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/Evaluation.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using TestSupport::describeCell;
using TestSupport::loadMessage;
using TestSupport::makeArchive;
using TestSupport::sheetData;
using TestSupport::WorkbookBuilder;

WorkbookBuilder oneCell() {
  return WorkbookBuilder().setSheet("<row r='1'><c r='A1'><v>1</v></c></row>");
}

TEST(LoadWorkbook, SheetsStandInTheWorkbooksOrder) {
  Document const document = WorkbookBuilder()
                                .addSheet("Second part", sheetData(""))
                                .addSheet("B &amp; C", sheetData(""), "state='hidden'")
                                .addSheet("Deep", sheetData(""), "state='veryHidden'")
                                .load();
  ASSERT_EQ(document.getSheets().size(), 3U);
  EXPECT_EQ(document.getSheets()[0].name, "Second part");
  EXPECT_EQ(document.getSheets()[1].name, "B & C");
  EXPECT_FALSE(document.getSheets()[0].hidden);
  EXPECT_TRUE(document.getSheets()[1].hidden);
  EXPECT_TRUE(document.getSheets()[2].hidden);
  EXPECT_EQ(document.findSheet("b & c"), 1U);
  EXPECT_EQ(document.findSheet("D"), std::nullopt);
}

TEST(LoadWorkbook, LayoutIsKeptForPictures) {
  Document const document =
      WorkbookBuilder()
          .setStyles(
              "<fonts><font/><font><b/></font></fonts>"
              "<cellXfs><xf/><xf fontId='1'/></cellXfs>")
          .addSheet("S",
                    "<sheetPr enableFormatConditionsCalculation='0'/><sheetViews><sheetView "
                    "showGridLines='0' rightToLeft='1'/></sheetViews>"
                    "<sheetFormatPr defaultColWidth='9.5' defaultRowHeight='15'/>"
                    "<cols><col min='2' max='3' width='20.5' hidden='1' style='1'/>"
                    "<col min='9' max='2'/></cols>" +
                        sheetData("<row r='3' ht='30' hidden='1'/><row r='4'/>"
                                  "<row r='5' s='1' customFormat='1'/>") +
                        "<mergeCells><mergeCell ref='A1:B2'/><mergeCell ref='?'/></mergeCells>")
          .load();
  Sheet const& sheet = document.getSheets()[0];
  EXPECT_TRUE(sheet.conditionalFormatsSwitchedOff);
  EXPECT_FALSE(sheet.layout.showGridLines);
  EXPECT_TRUE(sheet.layout.rightToLeft);
  EXPECT_EQ(sheet.layout.defaultColumnWidth, 9.5);
  EXPECT_EQ(sheet.layout.defaultRowHeight, 15);
  ASSERT_EQ(sheet.layout.columns.size(), 1U);
  EXPECT_EQ(sheet.layout.columns[0].first, 1U);
  EXPECT_EQ(sheet.layout.columns[0].end, 3U);
  EXPECT_EQ(sheet.layout.columns[0].width, 20.5);
  EXPECT_TRUE(sheet.layout.columns[0].hidden);
  EXPECT_EQ((*sheet.layout.columns[0].style)->getRunProps()->bold, true);
  ASSERT_EQ(sheet.layout.rows.size(), 2U);
  EXPECT_EQ(sheet.layout.rows[0].row, 2U);
  EXPECT_EQ(sheet.layout.rows[0].height, 30);
  EXPECT_TRUE(sheet.layout.rows[0].hidden);
  EXPECT_TRUE(sheet.layout.rows[1].style);
  EXPECT_THAT(sheet.layout.mergedRanges, testing::ElementsAre(TableRange{0, 0, 2, 2}));
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_EQ(document.getFindings()[0].range, "?");
}

TEST(LoadWorkbook, RulesOfASheetThatIsMarkedAsNotCalculatingAreResolvedAllTheSame) {
  Document const document =
      WorkbookBuilder()
          .addSheet("S", "<sheetPr enableFormatConditionsCalculation='0'/>" +
                             sheetData("<row r='1'><c r='A1'><v>1</v></c></row>") +
                             "<conditionalFormatting sqref='A1'><cfRule type='expression'>"
                             "<formula>A1=1</formula></cfRule></conditionalFormatting>")
          .load();
  EXPECT_TRUE(TestSupport::holds(document, 0, "A1"));
}

TEST(LoadWorkbook, ManualCalculationChangesNothing) {
  Document const document = WorkbookBuilder()
                                .setWorkbook("", "<calcPr calcMode='manual' fullCalcOnLoad='1'/>")
                                .setSheet("<row r='1'><c r='A1'><f>1+1</f><v>3</v></c></row>")
                                .load();
  EXPECT_EQ(describeCell(document, "A1"), "number 3");
}

TEST(LoadWorkbook, StrictDocumentsAndForeignPrefixesAreReadAlike) {
  auto parts = oneCell().makeParts();
  parts["xl/workbook.xml"] =
      "<x:workbook xmlns:x='http://purl.oclc.org/ooxml/spreadsheetml/main' "
      "xmlns:rel='http://purl.oclc.org/ooxml/officeDocument/relationships'>"
      "<x:sheets><x:sheet name='Strict' sheetId='1' rel:id='sheet1'/></x:sheets></x:workbook>";
  parts["xl/worksheets/sheet1.xml"] =
      "\xEF\xBB\xBF<q:worksheet xmlns:q='http://purl.oclc.org/ooxml/spreadsheetml/main'>"
      "<q:sheetData><q:row r='1'><q:c r='A1'><q:v>9</q:v></q:c></q:row></q:sheetData>"
      "<q:conditionalFormatting sqref='A1'><q:cfRule type='cellIs' operator='equal'>"
      "<q:formula>9</q:formula></q:cfRule></q:conditionalFormatting></q:worksheet>";
  parts["_rels/.rels"] =
      "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>"
      "<Relationship Id='a' Type='http://purl.oclc.org/ooxml/officeDocument/relationships/"
      "officeDocument' Target='/xl/workbook.xml'/></Relationships>";
  TestSupport::TemporaryFile const file(makeArchive(parts));
  Document const document = loadWorkbook(file.getPath());
  EXPECT_EQ(document.getSheets()[0].name, "Strict");
  EXPECT_EQ(describeCell(document, "A1"), "number 9");
  EXPECT_TRUE(TestSupport::holds(document, 0, "A1"));
}

TEST(LoadWorkbook, PartsAreFoundThroughRelationshipsWhateverTheirNames) {
  std::map<std::string, std::string> const parts{
      {"_rels/.rels",
       "<Relationships><Relationship Id='1' Type='x/officeDocument' "
       "Target='./Main/../Main/Book%201.XML'/></Relationships>"},
      {"main\\book 1.xml",
       "<workbook xmlns:r='http://schemas.openxmlformats.org/officeDocument/"
       "2006/relationships'><sheets><sheet name='S' r:id='9'/></sheets>"
       "</workbook>"},
      {"Main/_rels/Book 1.xml.rels",
       "<Relationships><Relationship Id='8' Type='x/sharedStrings' TargetMode='External' "
       "Target='http://example.com/'/><Relationship Id='9' Type='x/worksheet' "
       "Target='../Other/Page.xml'/></Relationships>"},
      {"other/page.xml",
       "<worksheet><sheetData><row><c><v>3</v></c></row></sheetData></worksheet>"}};
  TestSupport::TemporaryFile const file(makeArchive(parts));
  Document const document = loadWorkbook(file.getPath());
  EXPECT_EQ(describeCell(document, "A1"), "number 3");
}

TEST(LoadWorkbook, SheetsThatAreNoWorksheetsHaveEmptyTables) {
  Document const document =
      WorkbookBuilder()
          .addRelationship("chartsheet", "chartsheets/sheet1.xml")
          .setPart("xl/chartsheets/sheet1.xml", "<chartsheet/>")
          .setPart("xl/workbook.xml",
                   "<workbook xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/"
                   "relationships'><sheets><sheet name='Chart' r:id='rId1'/>"
                   "<sheet name='Sheet1' r:id='sheet1'/></sheets></workbook>")
          .setSheet("<row><c><v>1</v></c></row>")
          .load();
  EXPECT_FALSE(document.getSheets()[0].isWorksheet);
  EXPECT_EQ(document.getSheets()[0].table->getCellCount(), 0U);
  EXPECT_EQ(describeCell(document, "A1", 1), "number 1");
}

TEST(LoadWorkbook, DefinedNamesAreReadWithTheirScopeAndThoseThatCannotBeAreReported) {
  Document const document =
      WorkbookBuilder()
          .setWorkbook("",
                       "<definedNames><definedName name='Rate'>Sheet1!$A$1</definedName>"
                       "<definedName name='Rate' localSheetId='0'>7</definedName>"
                       "<definedName name='Bad'>1+</definedName>"
                       "<definedName name='_xlnm.Print_Area'>1+</definedName>"
                       "<definedName name='Lost' localSheetId='5'>1</definedName>"
                       "<definedName name='Ends'>Sheet1!$A$1,Sheet1!$A$3</definedName>"
                       "</definedNames>")
          .setSheet("")
          .load();
  auto const& names = document.getDefinedNames();
  ASSERT_EQ(names.size(), 5U);
  EXPECT_TRUE(names[4].expr) << "a union needs no parentheses";
  EXPECT_EQ(names[0].name, "Rate");
  EXPECT_EQ(names[0].formulaText, "Sheet1!$A$1");
  EXPECT_FALSE(names[0].sheet);
  EXPECT_TRUE(names[0].expr);
  EXPECT_EQ(names[1].sheet, 0U);
  EXPECT_FALSE(names[2].expr);
  ASSERT_EQ(document.getFindings().size(), 2U);
  EXPECT_THAT(document.getFindings()[0].message,
              testing::StartsWith("the name \"Bad\" stands for \"1+\", which cannot be read: "));
  EXPECT_EQ(document.getFindings()[1].message,
            "the name \"Lost\" belongs to a sheet that the workbook does not have; it is left out");
}

TEST(LoadWorkbook, OptionalPartsMayBeMissing) {
  auto const builder = WorkbookBuilder()
                           .setStyles("")
                           .setSheet("<row r='1'><c r='A1'><v>1</v></c></row>")
                           .removePart("xl/styles.xml");
  Document const document = builder.load();
  EXPECT_EQ(describeCell(document, "A1"), "number 1");
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_EQ(document.getFindings()[0].part, "xl/styles.xml");
  EXPECT_EQ(document.getFindings()[0].message,
            "the part is missing from the file; the workbook is read without it");
}

TEST(LoadWorkbook, TheErrorNamesFilePartPlaceAndProblem) {
  TestSupport::TemporaryFile const file(
      WorkbookBuilder().setSheet("<row r='1'><c r='ZZZZ1'/></row>").makeBytes());
  try {
    static_cast<void>(loadWorkbook(file.getPath()));
    FAIL() << "the file was read";
  } catch (LoadError const& error) {
    EXPECT_EQ(error.getFile(), file.getPath().string());
    EXPECT_EQ(error.getPart(), "xl/worksheets/sheet1.xml");
    EXPECT_EQ(error.getPlace(), "cell ZZZZ1");
    EXPECT_EQ(error.getProblem(), "is no cell of the sheet; the file is damaged");
    EXPECT_EQ(std::string(error.what()), error.getFile() + ": " + error.getPart() + ": " +
                                             error.getPlace() + ": " + error.getProblem());
  }
}

/// The message with which bytes in memory are refused.
std::string memoryMessage(std::string_view bytes, LoadOptions const& options = {}) {
  try {
    static_cast<void>(loadWorkbook(std::as_bytes(std::span(bytes)), options));
    return "";
  } catch (LoadError const& error) {
    return error.what();
  }
}

TEST(WorkbookInMemory, IsReadAsAFileIs) {
  std::string bytes = oneCell().makeBytes();
  Document const document = loadWorkbook(std::as_bytes(std::span(bytes)));
  bytes.assign(bytes.size(), '?');  // the document keeps nothing of them
  EXPECT_EQ(describeCell(document, "A1"), "number 1");
}

TEST(WorkbookInMemory, IsRefusedUnderANameOfTheCallersChoice) {
  EXPECT_EQ(memoryMessage(""), "workbook in memory: is empty");
  EXPECT_EQ(memoryMessage("<html>"),
            "workbook in memory: is no .xlsx workbook: it is no zip archive");
  LoadOptions options;
  options.name = "upload 7";
  EXPECT_EQ(memoryMessage("<html>", options),
            "upload 7: is no .xlsx workbook: it is no zip archive");
  std::string const bytes = oneCell().makeBytes();
  EXPECT_THAT(memoryMessage(std::string_view(bytes).substr(0, bytes.size() / 2)),
              testing::StartsWith("workbook in memory: is no .xlsx workbook, or is damaged"));
}

TEST(WorkbookInMemory, HasTheLimitsOfAFileButNotThatOfAPipe) {
  LoadOptions options;
  options.limits.pipeBytes = 10;
  EXPECT_EQ(memoryMessage(oneCell().makeBytes(), options), "");
  options.limits.partCount = 4;
  EXPECT_EQ(memoryMessage(oneCell().makeBytes(), options),
            "workbook in memory: holds 5 parts, but 4 is the limit");
}

TEST(DamagedFiles, FilesThatAreNoWorkbookAreToldApart) {
  EXPECT_EQ(loadMessage(""), "is empty");
  EXPECT_EQ(loadMessage("name,value\n"), "is no .xlsx workbook: it is no zip archive");
  EXPECT_THAT(loadMessage("PK\x03\x04 and nothing more"),
              testing::StartsWith("is no .xlsx workbook, or is damaged or cut off"));
  EXPECT_EQ(loadMessage(makeArchive({{"readme.txt", "hello"}})),
            "is no .xlsx workbook: the archive names no main part (_rels/.rels)");
  EXPECT_EQ(loadMessage(makeArchive({{"META-INF/manifest.xml", "<x/>"}})),
            "is an OpenDocument file; save it as .xlsx and try again");
  EXPECT_EQ(WorkbookBuilder().setPart("xl/workbook.xml", "<document/>").loadMessage(),
            "xl/workbook.xml: is no workbook: its root element is \"document\"");
}

TEST(DamagedFiles, CompoundFilesArePasswordProtectedOrOfTheOlderKind) {
  std::string const mark("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
  std::string name;
  for (char const letter : std::string("EncryptedPackage")) {
    name += letter;
    name += '\0';
  }
  EXPECT_EQ(loadMessage(mark + std::string(70'000, 'x')),
            "is a binary workbook of the older kind (.xls) or another compound file; save it as "
            ".xlsx and try again");
  // The name may stand anywhere, also where two of the pieces meet in which the file is read.
  for (std::size_t const distance : {0U, 100U, 65'520U, 65'536U, 200'000U}) {
    EXPECT_EQ(loadMessage(mark + std::string(distance, 'x') + name),
              "is protected with a password; save it without one and try again");
  }
}

TEST(DamagedFiles, BinaryPartsAreNamed) {
  EXPECT_EQ(WorkbookBuilder()
                .setPart("_rels/.rels",
                         "<Relationships><Relationship Id='1' "
                         "Type='x/officeDocument' Target='xl/workbook.bin'/>"
                         "</Relationships>")
                .loadMessage(),
            "xl/workbook.bin: is a workbook in binary parts (.xlsb); save it as .xlsx and try "
            "again");
}

TEST(DamagedFiles, MissingFilesAndFoldersAreRefused) {
  EXPECT_THROW(static_cast<void>(loadWorkbook("/nowhere/at/all.xlsx")), LoadError);
  EXPECT_THROW(static_cast<void>(loadWorkbook("/")), LoadError);
}

TEST(DamagedFiles, ATruncatedArchiveIsRefusedWhereverItEnds) {
  std::string const bytes = oneCell().makeBytes();
  EXPECT_EQ(loadMessage(bytes), "");
  for (std::size_t size = 1; size < bytes.size(); size += 13) {
    EXPECT_NE(loadMessage(bytes.substr(0, size)), "") << size;
  }
}

TEST(DamagedFiles, ChangedBytesAreRefusedOrHarmless) {
  std::string const bytes = oneCell().makeBytes();
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    std::string changed = bytes;
    changed[at] = static_cast<char>(changed[at] ^ 0x5A);
    static_cast<void>(loadMessage(changed));
  }
}

TEST(DamagedFiles, MissingPartsAreNamed) {
  EXPECT_EQ(oneCell().setPart("xl/unused.xml", "").removePart("xl/workbook.xml").loadMessage(),
            "xl/workbook.xml: is missing from the file; the file is damaged, fetch it anew");
  EXPECT_EQ(oneCell().removePart("xl/worksheets/sheet1.xml").loadMessage(),
            "xl/worksheets/sheet1.xml: sheet \"Sheet1\": is missing from the file; the file is "
            "damaged");
  EXPECT_EQ(oneCell().removePart("xl/_rels/workbook.xml.rels").loadMessage(),
            "xl/workbook.xml: sheet \"Sheet1\": refers to the relationship \"sheet1\", which the "
            "workbook does not have; the file is damaged");
  EXPECT_EQ(WorkbookBuilder()
                .setSharedStrings("<si><t>x</t></si>")
                .setSheet("<row r='1'><c r='A1' t='s'><v>0</v></c></row>")
                .removePart("xl/sharedStrings.xml")
                .loadMessage(),
            "xl/worksheets/sheet1.xml: cell A1: refers to the shared text \"0\", but the file has "
            "0; the file is damaged");
  EXPECT_EQ(WorkbookBuilder().loadMessage(),
            "xl/workbook.xml: sheets: the workbook has no sheet; the file is damaged");
}

TEST(DamagedFiles, AMalformedPartIsAnErrorAndNeverAnEmptySheet) {
  for (char const* sheet :
       {"", "<worksheet>", "<worksheet><sheetData></worksheet>", "<html/>", "not XML",
        "<worksheet><sheetData><row><c><v>1</v></c></row></sheetData>"}) {
    EXPECT_THAT(oneCell().setPart("xl/worksheets/sheet1.xml", sheet).loadMessage(),
                testing::StartsWith("xl/worksheets/sheet1.xml: byte "))
        << sheet;
  }
}

TEST(DamagedFiles, DocumentTypesAreRefusedInEveryPart) {
  std::string const bomb =
      "<!DOCTYPE x [<!ENTITY a 'aaaaaaaa'><!ENTITY b '&a;&a;&a;'>]><worksheet>&b;</worksheet>";
  for (char const* part : {"xl/worksheets/sheet1.xml", "xl/workbook.xml", "_rels/.rels",
                           "xl/styles.xml", "xl/sharedStrings.xml"}) {
    auto const message = WorkbookBuilder()
                             .setStyles("")
                             .setSharedStrings("")
                             .setSheet("")
                             .setPart(part, bomb)
                             .loadMessage();
    EXPECT_THAT(message, testing::StartsWith(part + std::string(": byte 0: a document type")));
  }
}

TEST(DamagedFiles, DeeplyNestedXmlIsRefusedInEveryPart) {
  std::string deep;
  for (int depth = 0; depth < 100'000; ++depth) {
    deep += "<a>";
  }
  for (char const* part : {"xl/worksheets/sheet1.xml", "xl/workbook.xml", "xl/styles.xml"}) {
    auto const message = WorkbookBuilder()
                             .setStyles("")
                             .setSheet("")
                             .setPart(part, "<workbook>" + deep)
                             .loadMessage();
    EXPECT_THAT(message, testing::StartsWith(part)) << message;
  }
}

TEST(DamagedFiles, ArchivesThatUnpackToFarMoreThanTheirSizeAreRefused) {
  LoadOptions options;
  options.limits.ratioFreeBytes = 100'000;
  auto const bomb = WorkbookBuilder().setSheet(std::string(1'000'000, ' '));
  EXPECT_EQ(bomb.loadMessage(), "");
  EXPECT_EQ(bomb.loadMessage(options),
            "xl/worksheets/sheet1.xml: unpacks to more than 250 times its size, as no honest "
            "workbook does; it is refused");
  options.limits = Limits();
  options.limits.unpackedBytes = 500'000;
  EXPECT_EQ(bomb.loadMessage(options),
            "xl/worksheets/sheet1.xml: unpacks to more than 500000 bytes, which is the limit");
}

TEST(DamagedFiles, PartsThatAreKeptWholeHaveALimitOfTheirOwn) {
  LoadOptions options;
  options.limits.wholePartBytes = 10'000;
  EXPECT_EQ(WorkbookBuilder()
                .setSheet(std::string(20'000, ' '))
                .setSharedStrings(std::string(20'000, ' '))
                .loadMessage(options),
            "");
  EXPECT_EQ(WorkbookBuilder().setSheet("").setStyles(std::string(20'000, ' ')).loadMessage(options),
            "xl/styles.xml: unpacks to more than 10000 bytes, which is the limit");
}

TEST(LoadWorkbook, ReadingSpendsFromTheBudgetAndStopsWithIt) {
  auto const builder = WorkbookBuilder().setSheet(std::string(1'000'000, ' '));
  WorkBudget budget({.steps = 100'000});
  LoadOptions options;
  options.budget = &budget;
  EXPECT_EQ(builder.loadMessage(options), "");
  EXPECT_GT(budget.getSteps(), 30'000U);
  WorkBudget small({.steps = 20'000});
  options.budget = &small;
  EXPECT_THROW(static_cast<void>(builder.load(options)), WorkBudgetExceeded);
  std::stop_source stop;
  stop.request_stop();
  WorkBudget stopped({}, stop.get_token());
  options.budget = &stopped;
  EXPECT_THROW(static_cast<void>(oneCell().load(options)), WorkStopped);
}

TEST(DamagedFiles, TooManyPartsOrSheetsAreRefused) {
  LoadOptions options;
  options.limits.partCount = 4;
  EXPECT_EQ(oneCell().loadMessage(options), "holds 5 parts, but 4 is the limit");
  options.limits = Limits();
  options.limits.sheets = 1;
  EXPECT_EQ(oneCell().addSheet("Two", sheetData("")).loadMessage(options),
            "xl/workbook.xml: sheet \"Two\": the workbook has more than 1 sheets, which is the "
            "limit");
}

}  // namespace
}  // namespace Zorv::Workbook
