#include "workbook/Read/ExternalLinkReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

#include "DOM/Table.h"
#include "workbook/DocumentContextProvider.h"
#include "workbook/Evaluation.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using TestSupport::WorkbookBuilder;

constexpr char const* keptCells =
    "<externalLink><externalBook><sheetNames><sheetName val='Data'/><sheetName val='Bare'/>"
    "</sheetNames><sheetDataSet><sheetData sheetId='0'><row r='1'><cell r='A1'><v>7</v></cell>"
    "<cell r='B1' t='str'><v>seven</v></cell><cell r='C1' t='b'><v>1</v></cell></row>"
    "<row r='2'><cell r='A2' t='e'><v>#N/A</v></cell></row></sheetData></sheetDataSet>"
    "</externalBook></externalLink>";

WorkbookBuilder linkTo(std::string const& part) {
  return WorkbookBuilder()
      .setWorkbook("", "<externalReferences><externalReference r:id='rId1'/></externalReferences>")
      .addRelationship("externalLink", "externalLinks/externalLink1.xml")
      .setPart("xl/externalLinks/externalLink1.xml", part)
      .setSheet("<row r='1'><c r='A1'><v>1</v></c></row>");
}

TEST(ExternalLinks, GiveTheCellsThatTheFileKeeps) {
  Document const document = linkTo(keptCells).load();
  EXPECT_THAT(document.getFindings(), testing::IsEmpty());
  DocumentContextProvider const provider(document, "en-US", DOM::TimeZone());
  EXPECT_EQ(document.getSheets().size(), 1U);
  EXPECT_EQ(provider.getTableCount(), 1U);
  auto const* const context = provider.findTableContext("[1]DATA");
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(context->getSheetName(), "[1]Data");
  EXPECT_EQ(provider.findTableContextAt(context->getDocTableIndex()), context);
  EXPECT_EQ(provider.getTableContext(context->getTable()), context);
  EXPECT_EQ(boost::get<FormulaModel::FormulaNumber>(context->getTable().findCell(0, 0)->value)
                .value.get(),
            7);
  EXPECT_EQ(
      boost::get<FormulaModel::FormulaString>(context->getTable().findCell(0, 1)->value).value,
      "seven");
  EXPECT_TRUE(
      boost::get<FormulaModel::FormulaBoolean>(context->getTable().findCell(0, 2)->value).value);
  EXPECT_EQ(boost::get<FormulaModel::FormulaError>(context->getTable().findCell(1, 0)->value).code,
            FormulaModel::FormulaErrorCode::NotAvailable);
  EXPECT_EQ(provider.findTableContext("[1]Bare"), nullptr);
  EXPECT_EQ(provider.findTableContext("Data"), nullptr);
}

TEST(ExternalLinks, ThatCannotBeReadAreTold) {
  Document const document = linkTo("<externalLink>").load();
  EXPECT_TRUE(document.getExternalSheets().empty());
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_THAT(document.getFindings()[0].message,
              testing::StartsWith("the link [1] to another workbook cannot be read: "));
  Document const lost = linkTo(keptCells).removePart("xl/externalLinks/externalLink1.xml").load();
  EXPECT_EQ(lost.getFindings().size(), 1U);
}

}  // namespace
}  // namespace Zorv::Workbook
