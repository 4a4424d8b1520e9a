#include "workbook/Read/FormatUses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::WorkbookBuilder;

std::string manyFormats(int count) {
  std::string formats = "<dxfs>";
  for (int i = 0; i < count; ++i) {
    formats += "<dxf/>";
  }
  return formats + "</dxfs>";
}

constexpr char const* relationships =
    "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>"
    "<Relationship Id='t' Type='http://schemas.openxmlformats.org/officeDocument/2006/"
    "relationships/";

TEST(FormatUses, NotesRulesFiltersSortOrdersTablesAndTheirStyles) {
  auto const document =
      WorkbookBuilder()
          .setStyles(manyFormats(8) +
                     "<tableStyles><tableStyle name='s'><tableStyleElement type='wholeTable' "
                     "dxfId='1'/></tableStyle></tableStyles>")
          .setSheet("",
                    "<autoFilter ref='A1:A9'><filterColumn colId='0'><colorFilter dxfId='2'/>"
                    "</filterColumn><sortState ref='A1:A9'><sortCondition ref='A1' dxfId='3'/>"
                    "</sortState></autoFilter>"
                    "<conditionalFormatting sqref='A1'><cfRule type='expression' dxfId='0'>"
                    "<formula>A1</formula></cfRule><cfRule type='unknown' dxfId='7'/>"
                    "</conditionalFormatting>"
                    "<tableParts><tablePart xmlns:r='http://schemas.openxmlformats.org/"
                    "officeDocument/2006/relationships' r:id='t'/></tableParts>")
          .setPart("xl/worksheets/_rels/sheet1.xml.rels",
                   std::string(relationships) +
                       "table' Target='../tables/table1.xml'/>"
                       "</Relationships>")
          .setPart("xl/tables/table1.xml",
                   "<table xmlns='http://schemas.openxmlformats.org/spreadsheetml/2006/main' "
                   "name='T' displayName='T' ref='A1:A9' headerRowDxfId='4'><tableColumns>"
                   "<tableColumn id='1' name='a' dataDxfId='5'/></tableColumns></table>")
          .load();
  EXPECT_THAT(document.getUnusedFormats(), ElementsAre(6));
}

TEST(FormatUses, AreNotKnownWhereThereAreReportsThatAreNotRead) {
  auto const document =
      WorkbookBuilder()
          .setStyles(manyFormats(2))
          .setSheet("")
          .setPart("xl/worksheets/_rels/sheet1.xml.rels",
                   std::string(relationships) +
                       "pivotTable' Target='../pivotTables/pivotTable1.xml'/></Relationships>")
          .load();
  EXPECT_THAT(document.getUnusedFormats(), IsEmpty());
}

}  // namespace
}  // namespace Zorv::Workbook
