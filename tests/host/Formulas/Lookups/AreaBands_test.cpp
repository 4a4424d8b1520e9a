#include "Formulas/Lookups/AreaBands.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

void fill(FormulaDocument& document, unsigned long firstRow, unsigned long endRow,
          unsigned long columns) {
  for (unsigned long row = firstRow; row < endRow; ++row) {
    for (unsigned long column = 0; column < columns; ++column) {
      document.sheet().table.setValue(row, column, FormulaModel::FormulaNumber{FloatNumber(1.0)});
    }
  }
}

/// The rows of all bands, one after the other without a gap, half-open.
std::pair<std::uint32_t, std::uint32_t> rowsOf(Area const& area) {
  AreaBands const bands(area);
  std::pair<std::uint32_t, std::uint32_t> rows{bands.at(0).firstRow, bands.at(0).firstRow};
  for (std::size_t number = 0; number < bands.count(); ++number) {
    Area const band = bands.at(number);
    EXPECT_EQ(band.firstRow, rows.second);
    EXPECT_LT(band.firstRow, band.endRow);
    EXPECT_EQ(band.firstColumn, area.firstColumn);
    EXPECT_EQ(band.endColumn, area.endColumn);
    rows.second = band.endRow;
  }
  return rows;
}

TEST(AreaBands, CoverTheRowsWithCells) {
  FormulaDocument document;
  fill(document, 100, 20'100, 3);
  Area const whole{&document.sheet(), 0, 0, DOM::Table::rowCount, 2};
  EXPECT_EQ(rowsOf(whole), (std::pair{100U, 20'100U}));
  Area const part{&document.sheet(), 5000, 1, 15'000, 2};
  EXPECT_EQ(rowsOf(part), (std::pair{5000U, 15'000U}));
  Area const beyond{&document.sheet(), 20'000, 0, 30'000, DOM::Table::columnCount};
  EXPECT_EQ(rowsOf(beyond), (std::pair{20'000U, 20'100U}));
}

TEST(AreaBands, ThereAreNoneWhereThereAreNoCells) {
  FormulaDocument document;
  Area const area{&document.sheet(), 0, 0, 1000, 1};
  EXPECT_EQ(AreaBands(area).count(), 0U);
  fill(document, 100, 200, 1);
  EXPECT_EQ(AreaBands({&document.sheet(), 0, 0, 100, 1}).count(), 0U);
  EXPECT_EQ(AreaBands({&document.sheet(), 200, 0, 1000, 1}).count(), 0U);
}

TEST(AreaBands, EachHasSomeThousandCells) {
  FormulaDocument document;
  fill(document, 0, 20'000, 5);
  for (std::uint32_t const columns : {1U, 2U, 5U}) {
    std::size_t const cells = std::size_t{20'000} * columns;
    AreaBands const bands({&document.sheet(), 0, 0, 20'000, columns});
    EXPECT_GE(bands.count(), cells / 8192);
    EXPECT_LE(bands.count(), cells / 2048);
  }
  // Cells that lie far apart are no reason for as many bands as there are rows.
  FormulaDocument sparse;
  fill(sparse, 0, 1, 1);
  fill(sparse, DOM::Table::rowCount - 1, DOM::Table::rowCount, 1);
  EXPECT_LE(AreaBands({&sparse.sheet(), 0, 0, DOM::Table::rowCount, 1}).count(), 1024U);
}

TEST(AreaBands, CellsAreCountedAtMostOnceAndAtMostOneForEachPlace) {
  FormulaDocument document;
  fill(document, 0, 50, 4);
  EXPECT_EQ(mostCellsIn({&document.sheet(), 0, 0, DOM::Table::rowCount, 1}), 200U);
  EXPECT_EQ(mostCellsIn({&document.sheet(), 0, 0, 10, 3}), 30U);
}

}  // namespace

}  // namespace Zorv::Formulas
