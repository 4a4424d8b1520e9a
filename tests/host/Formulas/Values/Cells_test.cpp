#include "Formulas/Values/Cells.h"

#include <gtest/gtest.h>

#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

TEST(Cells, CellsAreCountedAtMostOnceAndAtMostOneForEachPlace) {
  FormulaDocument document;
  for (unsigned long position = 0; position < 200; ++position) {
    document.sheet().table.setValue(position / 4, position % 4, FormulaModel::FormulaEmpty());
  }
  EXPECT_EQ(maxCellCount({&document.sheet(), 0, 0, DOM::Table::rowCount, 1}), 200U);
  EXPECT_EQ(maxCellCount({&document.sheet(), 0, 0, 10, 3}), 30U);
}

}  // namespace

}  // namespace Zorv::Formulas
