#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <future>
#include <stdexcept>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CalculatorTest.h"

// What the calculator remembers of cells.
namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::IsEmpty;

class CellStylesCacheTest : public CalculatorTest {
protected:
  CellStylesCacheTest() {
    host.table.setValue(0, 0, number(1));
    addFormat(host.table, {{0, 0, 5, 5}}, holdsAlways(), bold);
  }

  [[nodiscard]] std::size_t countValues() const { return host.journal.count("getCellValue"); }

  UUID const bold = addFont(1, true);
};

TEST_F(CellStylesCacheTest, ACellIsResolvedOnce) {
  auto const style = getStyle(0, 0);
  ASSERT_NE(style, nullptr);
  EXPECT_EQ(style, resolve(0, 0));
  host.journal.clear();
  EXPECT_EQ(getStyle(0, 0), style);
  EXPECT_THAT(host.journal.getEntries(), IsEmpty());
}

TEST_F(CellStylesCacheTest, CellsAreKnownByTheirIdentities) {
  host.table.setValue(0, 1, number(1));
  host.table.setValue(1, 0, number(1));
  addFormat(host.table, {{0, 0, 1, 1}}, holdsAlways(), addFont(2, std::nullopt, 8.0));
  auto const first = getStyle(0, 0);
  auto const right = getStyle(0, 1);
  EXPECT_NE(first, right);
  EXPECT_EQ(getStyle(1, 0), right);
  EXPECT_EQ(countValues(), 4U);

  // The cell moves out of the format's range, and stays the same cell.
  host.table.insertRows(0, 10);
  calculator->clearTablesRangesCache();
  host.table.setConditionalFormats({});
  addFormat(host.table, {{0, 0, 1, 1}}, holdsAlways());
  EXPECT_EQ(getStyle(10, 0), first);
  EXPECT_EQ(getStyle(10, 1), right);
  EXPECT_EQ(countValues(), 4U);
  // What came to its old position is another cell.
  host.table.setValue(0, 0, number(1));
  EXPECT_NE(getStyle(0, 0), first);
}

TEST_F(CellStylesCacheTest, NoStyleIsRememberedLikeAnyOther) {
  host.table.setValue(9, 9, number(1));
  EXPECT_EQ(getStyle(9, 9), nullptr);
  addFormat(host.table, {{9, 9, 10, 10}}, holdsAlways(), bold);
  calculator->clearTablesRangesCache();
  EXPECT_EQ(getStyle(9, 9), nullptr);
  EXPECT_NE(resolve(9, 9), nullptr);
  calculator->clearCellStylesCache();
  EXPECT_NE(getStyle(9, 9), nullptr);
}

TEST_F(CellStylesCacheTest, AnOutdatedStyleStaysUntilTheCacheIsCleared) {
  auto const style = getStyle(0, 0);
  host.styles.getTableStyles().at(bold).setRunProps(
      makeProps<DOM::RunProps>([](DOM::RunProps& props) { props.italic = true; }));
  EXPECT_EQ(getStyle(0, 0), style);
  calculator->clearCellStylesCache();
  auto const renewed = getStyle(0, 0);
  EXPECT_NE(renewed, style);
  EXPECT_EQ((*renewed)->getRunProps()->italic, true);
  EXPECT_EQ((*style)->getRunProps()->bold, true);
}

TEST_F(CellStylesCacheTest, CellsInAreasAreForgottenWhereverTheyHaveMoved) {
  host.table.setValue(0, 1, number(1));
  host.table.setValue(1, 0, number(1));
  for (auto const& [row, column] : {std::pair{0UL, 0UL}, {0UL, 1UL}, {1UL, 0UL}}) {
    EXPECT_NE(getStyle(row, column), nullptr);
  }
  host.table.insertRows(0, 2);  // the cells stand in rows 2 and 3 now
  calculator->forgetCells(DOM::Table(), {{0, 0, 9, 9}});
  calculator->forgetCells(host.table, {{0, 0, 2, 9}, {3, 0, 4, 1}});
  host.journal.clear();
  (void)getStyle(2, 0);
  (void)getStyle(2, 1);
  EXPECT_EQ(countValues(), 0U);
  (void)getStyle(3, 0);
  EXPECT_EQ(countValues(), 1U);
}

TEST_F(CellStylesCacheTest, ClearingReleasesTheRememberedStyles) {
  auto const format = std::make_shared<DOM::CellFormat const>(DOM::CellFormat{"0%"});
  host.styles.getTableStyles().at(bold).setCellFormat(format);
  auto const before = format.use_count();
  (void)getStyle(0, 0);
  EXPECT_EQ(format.use_count(), before + 1);
  calculator->clearCellStylesCache();
  EXPECT_EQ(format.use_count(), before);
  auto const kept = getStyle(0, 0);
  calculator.reset();
  EXPECT_EQ(format.use_count(), before + 1);
}

TEST_F(CellStylesCacheTest, APositionWithoutACellIsResolvedEveryTime) {
  auto const style = getStyle(3, 3);
  ASSERT_NE(style, nullptr);
  EXPECT_EQ(getStyle(3, 3), style);
  EXPECT_EQ(countValues(), 2U);
  // And what was found for it is not taken for the cell that is made there.
  host.table.setValue(3, 3, error(FormulaModel::FormulaErrorCode::Name));
  EXPECT_EQ(getStyle(3, 3), nullptr);
}

TEST_F(CellStylesCacheTest, ATableWithoutFormatsIsNotRemembered) {
  DOM::Table other;
  other.setValue(0, 0, number(1));
  auto const ask = [&] {
    return calculator->getConditionalFormatCellStyle(host.styles, other.getCellInfo(0, 0));
  };
  EXPECT_EQ(ask(), nullptr);
  EXPECT_THAT(host.journal.getEntries(), IsEmpty());
  addFormat(other, {{0, 0, 1, 1}}, holdsAlways(), bold);
  EXPECT_NE(ask(), nullptr);
  // Without formats there is no style at once, whatever was remembered before.
  other.setConditionalFormats({});
  EXPECT_EQ(ask(), nullptr);
}

TEST_F(CellStylesCacheTest, TablesAreToldApartByTheirIdentitiesWhateverTheirOrder) {
  std::vector<std::unique_ptr<DOM::Table>> tables;
  for (unsigned char const uuid : std::to_array<unsigned char>({5, 2, 7, 1, 6, 3, 4})) {
    DOM::Table& table = *tables.emplace_back(std::make_unique<DOM::Table>(makeUUID(uuid)));
    table.setValue(0, 0, number(1));
    addFormat(table, {{0, 0, 1, 1}}, holdsAlways(), addFont(uuid, std::nullopt, uuid));
  }
  for (int round = 0; round < 2; ++round) {
    for (auto const& table : tables) {
      auto const style =
          calculator->getConditionalFormatCellStyle(host.styles, table->getCellInfo(0, 0));
      ASSERT_NE(style, nullptr);
      auto const uuid = makeUUID(static_cast<unsigned char>(*(*style)->getRunProps()->fontSize));
      EXPECT_EQ(table->getUUID(), uuid);
    }
  }
  EXPECT_EQ(countValues(), tables.size());
}

TEST_F(CellStylesCacheTest, AFailedRequestIsNotRememberedAndUnlocks) {
  bool fails = true;
  provider->answerBy([&](DOM::CellInfo const&) {
    if (fails) {
      throw std::out_of_range("no value");
    }
    return number(1);
  });
  EXPECT_THROW((void)getStyle(0, 0), std::out_of_range);
  EXPECT_THROW((void)getStyle(0, 0), std::out_of_range);
  fails = false;
  // On a thread of its own, which could not enter were the lock still held.
  EXPECT_NE(std::async(std::launch::async, [&] { return getStyle(0, 0); }).get(), nullptr);
  EXPECT_EQ(countValues(), 3U);
}

TEST_F(CellStylesCacheTest, TheProviderMayAskAboutOtherCellsMeanwhile) {
  host.table.setValue(0, 1, number(2));
  DOM::Table before{UUID()};  // its entry comes first, and moves that of the other table
  before.setValue(0, 0, number(3));
  addFormat(before, {{0, 0, 1, 1}}, holdsAlways(), addFont(2, false));
  DOM::SharedCellStylePtr inner;
  bool asked = false;
  provider->answerBy([&](DOM::CellInfo const& cellInfo) {
    if (!std::exchange(asked, true)) {
      (void)getStyle(0, 1);
      inner = calculator->getConditionalFormatCellStyle(host.styles, before.getCellInfo(0, 0));
    }
    return cellInfo.getCell()->value;
  });
  auto const outer = getStyle(0, 0);
  ASSERT_NE(outer, nullptr);
  EXPECT_EQ((*outer)->getRunProps()->bold, true);
  EXPECT_EQ((*inner)->getRunProps()->bold, false);
  host.journal.clear();
  EXPECT_EQ(getStyle(0, 0), outer);
  EXPECT_EQ(getStyle(0, 1), outer);
  EXPECT_EQ(calculator->getConditionalFormatCellStyle(host.styles, before.getCellInfo(0, 0)),
            inner);
  EXPECT_THAT(host.journal.getEntries(), IsEmpty());
}

TEST_F(CellStylesCacheTest, TheOuterRequestReplacesWhatAnInnerOneRememberedForTheSameCell) {
  DOM::SharedCellStylePtr inner = resolve(0, 0);
  int depth = 0;
  provider->answerBy([&](DOM::CellInfo const&) -> FormulaValue {
    if (++depth == 1) {
      inner = getStyle(0, 0);
      return number(1);
    }
    return error(FormulaModel::FormulaErrorCode::Name);
  });
  auto const outer = getStyle(0, 0);
  EXPECT_EQ(inner, nullptr);
  ASSERT_NE(outer, nullptr);
  EXPECT_EQ(getStyle(0, 0), outer);
  EXPECT_EQ(depth, 2);
}

TEST_F(CellStylesCacheTest, AStyleThatIsRememberedMeanwhileIsReplacedByAnyOther) {
  // The second format holds for the values 2 alone.
  addFormat(host.table, {{0, 0, 5, 5}},
            DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::Equal, Expr()),
            addFont(2, std::nullopt, 8.0));
  host.engine.answer(number(2));
  struct Case {
    char const* name;
    FormulaValue inner;
    FormulaValue outer;
  };
  FormulaValue const failing = error(FormulaModel::FormulaErrorCode::Name);
  for (Case const& c :
       {Case{"one style by another", number(1), number(2)},
        Case{"a style by none", number(1), failing}, Case{"none by a style", failing, number(1)}}) {
    SCOPED_TRACE(c.name);
    calculator->clearCellStylesCache();
    provider->answerBy([&](DOM::CellInfo const&) { return c.inner; });
    auto const innerStyle = resolve(0, 0);
    provider->answerBy([&](DOM::CellInfo const&) { return c.outer; });
    auto const outerStyle = resolve(0, 0);
    ASSERT_NE(innerStyle, outerStyle);

    int depth = 0;
    provider->answerBy([&](DOM::CellInfo const&) {
      if (depth++ == 0) {
        // The inner request asks for one value for each of the two formats.
        EXPECT_EQ(getStyle(0, 0), innerStyle);
        return c.outer;
      }
      return depth <= 3 ? c.inner : c.outer;
    });
    EXPECT_EQ(getStyle(0, 0), outerStyle);
    EXPECT_EQ(getStyle(0, 0), outerStyle);
  }
}

TEST_F(CellStylesCacheTest, ARememberedCellDoesNotAskForTheFormats) {
  auto const style = getStyle(0, 0);
  calculator->clearTablesRangesCache();
  EXPECT_EQ(getStyle(0, 0), style);
  addFormat(host.table, {{0, 0, 5, 5}}, holdsAlways(), bold);
  // Were the list made for the remembered cell, it would be kept, and the new format missing.
  EXPECT_EQ(calculator->getConditionalFormatRefs(host.table).size(), 2U);
}

TEST_F(CellStylesCacheTest, TheProviderMayClearTheCellStylesMeanwhile) {
  host.table.setValue(0, 1, number(2));
  (void)getStyle(0, 1);
  provider->answerBy([&](DOM::CellInfo const&) {
    calculator->clearCellStylesCache();
    return number(1);
  });
  auto const style = getStyle(0, 0);
  ASSERT_NE(style, nullptr);
  host.journal.clear();
  EXPECT_EQ(getStyle(0, 0), style);
  EXPECT_EQ(countValues(), 0U);
  (void)getStyle(0, 1);
  EXPECT_EQ(countValues(), 1U);
}

TEST_F(CellStylesCacheTest, TheProviderMayAskForTheFormatsMeanwhile) {
  ConditionalFormatRefs const* refs = nullptr;
  provider->answerBy([&](DOM::CellInfo const& cellInfo) {
    refs = &calculator->getConditionalFormatRefs(cellInfo.getTable());
    return number(1);
  });
  EXPECT_NE(getStyle(0, 0), nullptr);
  EXPECT_EQ(refs, &calculator->getConditionalFormatRefs(host.table));
}

TEST_F(CellStylesCacheTest, ManyCellsAreRememberedEachByItself) {
  constexpr unsigned long side = 40;
  for (unsigned long row = 0; row < side; ++row) {
    for (unsigned long column = 0; column < side; ++column) {
      host.table.setValue(row, column, number(1));
    }
  }
  for (int round = 0; round < 2; ++round) {
    for (unsigned long row = 0; row < side; ++row) {
      for (unsigned long column = 0; column < side; ++column) {
        EXPECT_EQ(getStyle(row, column) != nullptr, row < 5 && column < 5);
      }
    }
  }
  EXPECT_EQ(countValues(), 25U);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
