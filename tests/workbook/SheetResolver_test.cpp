#include "workbook/SheetResolver.h"

#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "DOM/A1Notation.h"
#include "Utils/Exceptions.h"
#include "workbook/DocumentResolver.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

/// A1 and A2 hold the italic numbers 1 and 9; A3 is empty. Numbers above 5 are bold, and a colour
/// scale from white to red has the same range.
Document loadRuledSheet() {
  return TestSupport::WorkbookBuilder()
      .setStyles(
          "<fonts><font/><font><i/></font></fonts><cellXfs><xf/><xf fontId='1'/></cellXfs>"
          "<dxfs><dxf><font><b/></font></dxf></dxfs>")
      .setSheet(
          "<row r='1'><c r='A1' s='1'><v>1</v></c></row>"
          "<row r='2'><c r='A2' s='1'><v>9</v></c></row>",
          "<conditionalFormatting sqref='A1:A3'>"
          "<cfRule type='colorScale' priority='1'><colorScale><cfvo type='min'/><cfvo type='max'/>"
          "<color rgb='FFFFFFFF'/><color rgb='FFFF0000'/></colorScale></cfRule>"
          "<cfRule type='cellIs' operator='greaterThan' dxfId='0' priority='2'>"
          "<formula>5</formula></cfRule></conditionalFormatting>")
      .load();
}

DOM::CellInfo cellOf(Document const& document, char const* address) {
  CellIndex const index = *DOM::A1Notation::parseCell(address);
  return document.getSheets()[0].table->getCellInfo(index.getRow().get(), index.getColumn().get());
}

TEST(SheetResolver, OnePassTellsStylesVisualsAndTheirRules) {
  Document const document = loadRuledSheet();
  DocumentResolver const documentResolver(document);
  SheetResolver const resolver = documentResolver.prepare(0);
  std::vector<std::pair<bool, bool>> cells;  // bold, coloured
  resolver.getVisualResolver().visit(
      {.range = document.getSheets()[0].table->getUsedRange()},
      [&](Visuals::VisualCell const& cell) {
        cells.emplace_back(cell.resolved.style != nullptr, cell.visuals.scale.has_value());
        for (auto const format : cell.resolved.formats) {
          EXPECT_EQ(resolver.getRules().ruleOf(format).type, "cellIs");
        }
        EXPECT_EQ(resolver.getRules().rulesOf(cell.visuals).scale->type, "colorScale");
      });
  EXPECT_EQ(cells, (std::vector<std::pair<bool, bool>>{{false, true}, {true, true}}));
}

TEST(SheetResolver, TheEffectiveStyleIsTheOwnOneWithTheConditionalOneOverIt) {
  Document const document = loadRuledSheet();
  DocumentResolver const documentResolver(document);
  SheetResolver const resolver = documentResolver.prepare(0);
  DOM::CellStyle const small = resolver.findEffectiveStyle(cellOf(document, "A1"));
  EXPECT_EQ(small.getRunProps()->italic, true);
  EXPECT_NE(small.getRunProps()->bold, true);
  DOM::CellStyle const large = resolver.findEffectiveStyle(cellOf(document, "A2"));
  EXPECT_EQ(large.getRunProps()->italic, true);
  EXPECT_EQ(large.getRunProps()->bold, true);
}

TEST(SheetResolver, AnswersAlikeAfterAMove) {
  Document const document = loadRuledSheet();
  DocumentResolver const documentResolver(document);
  SheetResolver first = documentResolver.prepare(0);
  SheetResolver const second = std::move(first);
  EXPECT_TRUE(second.getTableResolver().resolve(cellOf(document, "A2")));
  EXPECT_TRUE(second.getVisualResolver().resolve(cellOf(document, "A2")).scale);
}

TEST(SheetResolver, AFormatThatAProgramAddsIsResolvedWithoutARule) {
  Document document = loadRuledSheet();
  document.getSheets()[0].table->addConditionalFormat(
      {{0, 0, 1, 1}},
      DOM::NullaryConditionalFormatOperator(DOM::NullaryConditionalFormatType::NoBlanks),
      document.getRules()[1].format->getStyleUUID());
  DocumentResolver const documentResolver(document);
  SheetResolver const resolver = documentResolver.prepare(0);
  EXPECT_TRUE(resolver.getTableResolver().resolve(cellOf(document, "A1")));
}

TEST(DocumentResolver, RefusesAnUnknownLocale) {
  Document const document = loadRuledSheet();
  EXPECT_THROW(DocumentResolver(document, "no such locale"), BaseRuntimeError);
}

}  // namespace
}  // namespace Zorv::Workbook
