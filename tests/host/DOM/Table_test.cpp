#include "DOM/Table.h"

#include <memory>
#include <vector>

#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

#include "Utils/Exceptions.h"

namespace Zorv::DOM {
namespace {

FormulaValue number(double value) { return FormulaModel::FormulaNumber{FloatNumber(value)}; }

double readNumber(Table const& table, unsigned long row, unsigned long column) {
  return boost::get<FormulaModel::FormulaNumber>(table.findCell(row, column)->value).value.get();
}

TEST(Table, HasAnIdentityOfItsOwn) {
  Table const a;
  Table const b;
  EXPECT_NE(a.getUUID(), b.getUUID());
  EXPECT_NE(a.getID() < b.getID(), b.getID() < a.getID());
  UUID const given = UUID::generate();
  EXPECT_EQ(Table(given).getUUID(), given);
}

TEST(Table, HoldsOnlyTheCellsThatItWasGiven) {
  Table table;
  EXPECT_EQ(table.getCellCount(), 0U);
  EXPECT_EQ(table.getUsedRange(), TableRange());
  EXPECT_EQ(table.getUsedRows(), std::pair(0UL, 0UL));
  table.setValue(5, 2, number(1.5));
  table.obtainCell(7, 9);
  EXPECT_EQ(table.getCellCount(), 2U);
  EXPECT_EQ(readNumber(table, 5, 2), 1.5);
  EXPECT_EQ(table.findCell(5, 3), nullptr);
  EXPECT_EQ(table.getUsedRange(), (TableRange{5, 2, 8, 10}));
  EXPECT_EQ(table.getUsedRows(), std::pair(5UL, 8UL));
  table.removeCell(5, 2);
  table.removeCell(5, 2);
  EXPECT_EQ(table.findCell(5, 2), nullptr);
  EXPECT_EQ(table.getCellCount(), 1U);
}

TEST(Table, RefusesCellsOutsideTheSheet) {
  Table table;
  table.setValue(1048575, 16383, number(1));
  EXPECT_THROW(table.obtainCell(1048576, 0), BaseRuntimeError);
  EXPECT_THROW(table.setValue(0, 16384, number(1)), BaseRuntimeError);
  EXPECT_EQ(table.findCell(1048576, 0), nullptr);
  EXPECT_EQ(table.findCell(1048574, 16383 + 16384), nullptr);
  table.removeCell(1048574, 16383 + 16384);
  EXPECT_EQ(table.getCellCount(), 1U);
}

TEST(Table, RowsAndColumnsHaveIDsUpToTheEdge) {
  Table const table;
  EXPECT_EQ(table.getRowID(0), RowID(1));
  EXPECT_EQ(table.getRowID(1048575), RowID(1048576));
  EXPECT_EQ(table.getRowID(1048576), RowID(0));
  EXPECT_EQ(table.getColumnID(16383), ColumnID(16384));
  EXPECT_EQ(table.getColumnID(16384), ColumnID(0));
}

TEST(Table, EditsMoveCellsAndIDsTogether) {
  Table table;
  table.setValue(10, 10, number(1));
  RowID const row = table.getRowID(10);
  ColumnID const column = table.getColumnID(10);

  table.insertRows(5, 3);
  table.insertColumns(10, 1);
  EXPECT_EQ(readNumber(table, 13, 11), 1.0);
  EXPECT_EQ(table.getRowID(13), row);
  EXPECT_EQ(table.getColumnID(11), column);

  table.deleteRows(0, 2);
  table.deleteColumns(0, 4);
  EXPECT_EQ(readNumber(table, 11, 7), 1.0);
  EXPECT_EQ(table.getRowID(11), row);
  EXPECT_EQ(table.getColumnID(7), column);

  table.moveRows(11, 1, 0);
  table.moveColumns(7, 1, 100);
  EXPECT_EQ(readNumber(table, 0, 99), 1.0);
  EXPECT_EQ(table.getRowID(0), row);
  EXPECT_EQ(table.getColumnID(99), column);
  EXPECT_EQ(table.getCellCount(), 1U);
}

TEST(Table, DeletedLinesTakeTheirCellsAlong) {
  Table table;
  table.setValue(1, 1, number(1));
  table.setValue(2, 2, number(2));
  table.deleteRows(1, 1);
  EXPECT_EQ(table.getCellCount(), 1U);
  EXPECT_EQ(readNumber(table, 1, 2), 2.0);
  table.deleteColumns(2, 1);
  EXPECT_EQ(table.getCellCount(), 0U);
}

TEST(Table, RefusesInsertionsThatWouldPushCellsOffTheSheet) {
  Table table;
  table.setValue(1048574, 16382, number(1));
  RowID const lastRow = table.getRowID(1048575);
  table.insertRows(0, 1);
  table.insertColumns(0, 1);
  EXPECT_THROW(table.insertRows(0, 1), BaseRuntimeError);
  EXPECT_THROW(table.insertColumns(0, 1), BaseRuntimeError);
  EXPECT_EQ(readNumber(table, 1048575, 16383), 1.0);
  EXPECT_EQ(table.getRowIds().beginOf(lastRow.get()), 1048576UL);
}

TEST(Table, InsertsAsManyColumnsAsAreEmptyAtTheFarEdge) {
  for (unsigned long const empty : {1UL, 2UL, 63UL, 64UL, 65UL, 200UL}) {
    Table table;
    for (unsigned long row = 0; row < 600; ++row) {
      table.setValue(row, 0, number(1));
    }
    unsigned long const last = Table::columnCount - 1 - empty;
    table.setValue(400, last, number(2));
    EXPECT_THROW(table.insertColumns(1, empty + 1), BaseRuntimeError) << empty;
    EXPECT_EQ(readNumber(table, 400, last), 2.0) << empty;
    table.insertColumns(1, empty);
    EXPECT_EQ(readNumber(table, 400, Table::columnCount - 1), 2.0) << empty;
  }
}

TEST(Table, RefusesEditsOutsideTheSheetAndChangesNothing) {
  Table table;
  table.setValue(0, 0, number(1));
  constexpr unsigned long rows = Table::rowCount;
  constexpr unsigned long columns = Table::columnCount;
  constexpr unsigned long huge = ~0UL;
  EXPECT_THROW(table.insertRows(rows, 1), BaseRuntimeError);
  EXPECT_THROW(table.insertColumns(1, columns), BaseRuntimeError);
  EXPECT_THROW(table.deleteRows(rows - 1, 2), BaseRuntimeError);
  EXPECT_THROW(table.deleteRows(1, huge), BaseRuntimeError);
  EXPECT_THROW(table.deleteColumns(huge, 1), BaseRuntimeError);
  EXPECT_THROW(table.moveRows(0, 1, rows + 1), BaseRuntimeError);
  EXPECT_THROW(table.moveColumns(columns, 1, 0), BaseRuntimeError);
  EXPECT_EQ(readNumber(table, 0, 0), 1.0);
  EXPECT_EQ(table.getRowID(0), RowID(1));
  EXPECT_EQ(table.getColumnID(0), ColumnID(1));
}

TEST(Table, EditsOfNothingChangeNothing) {
  Table table;
  table.setValue(3, 3, number(1));
  table.insertRows(0, 0);
  table.insertColumns(0, 0);
  table.deleteRows(3, 0);
  table.deleteColumns(3, 0);
  table.moveRows(3, 2, 3);
  table.moveRows(3, 2, 4);
  table.moveRows(3, 2, 5);
  table.moveColumns(3, 0, 9);
  EXPECT_EQ(readNumber(table, 3, 3), 1.0);
  EXPECT_EQ(table.getRowID(3), RowID(4));
}

std::unique_ptr<ConditionalFormat const> makeFormat(UUID style) {
  return std::make_unique<ConditionalFormat const>(
      std::vector<TableRangeByID>{},
      NullaryConditionalFormatOperator(NullaryConditionalFormatType::Blanks), style);
}

TEST(Table, KeepsItsConditionalFormatsInOrderOfPriority) {
  Table table;
  EXPECT_TRUE(table.getLiveConditionalFormats().empty());
  UUID const first = UUID::generate();
  UUID const second = UUID::generate();
  table.addConditionalFormat(makeFormat(first));
  table.addConditionalFormat(makeFormat(second));
  auto const& formats = table.getLiveConditionalFormats();
  ASSERT_EQ(formats.size(), 2U);
  EXPECT_EQ(formats[0]->getStyleUUID(), first);
  EXPECT_EQ(formats[1]->getStyleUUID(), second);

  Table::LiveConditionalFormats replacement;
  replacement.push_back(makeFormat(second));
  table.setConditionalFormats(std::move(replacement));
  ASSERT_EQ(table.getLiveConditionalFormats().size(), 1U);
  EXPECT_EQ(table.getLiveConditionalFormats()[0]->getStyleUUID(), second);
}

TEST(Table, CreatesAConditionalFormatForRangesAtTheirCurrentPositions) {
  Table table;
  table.deleteRows(2, 3);
  UUID const style = UUID::generate();
  std::vector<TableRange> const ranges{{0, 0, 5, 1}, {1, 2, 2, 4}};
  table.addConditionalFormat(
      ranges, NullaryConditionalFormatOperator(NullaryConditionalFormatType::Blanks), style, true);
  ASSERT_EQ(table.getLiveConditionalFormats().size(), 1U);
  ConditionalFormat const& format = *table.getLiveConditionalFormats().front();
  EXPECT_EQ(convertToTableRanges(table, format.getRanges()), ranges);
  EXPECT_EQ(format.getOperator().which(), 0);
  EXPECT_EQ(format.getStyleUUID(), style);
  EXPECT_TRUE(format.getStopCalculateConditions());
}

TEST(Table, RefusesAConditionalFormatForARangeThatIsEmptyOrLeavesTheSheet) {
  Table table;
  NullaryConditionalFormatOperator const blanks(NullaryConditionalFormatType::Blanks);
  EXPECT_THROW(table.addConditionalFormat({{0, 0, 1, 1}, {3, 0, 3, 1}}, blanks, UUID()),
               BaseRuntimeError);
  EXPECT_THROW(table.addConditionalFormat({{0, 0, Table::rowCount + 1, 1}}, blanks, UUID()),
               BaseRuntimeError);
  EXPECT_TRUE(table.getLiveConditionalFormats().empty());
}

}  // namespace
}  // namespace Zorv::DOM
