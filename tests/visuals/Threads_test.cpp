// Visuals drawn by several threads of one pass.

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "support/ForwardingValueContextProvider.h"
#include "visuals/VisualTable.h"

namespace Zorv::Visuals {
namespace {

using ConditionalFormatters::TablePass;
using TestSupport::formulaThreshold;
using TestSupport::makeIcons;
using TestSupport::makeScale;
using TestSupport::threshold;
using TestSupport::VisualTable;
using Kind = ThresholdKind;

constexpr unsigned long many = 30'000;

/// Numbers in column A, in an order of their own.
void fillColumn(VisualTable& table) {
  for (unsigned long row = 0; row < many; ++row) {
    table.table.setValue(
        row, 0, FormulaModel::FormulaNumber{FloatNumber(static_cast<double>(row * 7919 % many))});
  }
}

std::string describe(CellVisuals const& visuals) {
  auto const& [scale, bar, icon, showValue] = visuals;
  return std::to_string(scale ? scale->colour.red : -1) + " " +
         std::to_string(bar ? bar->extent.to : -1) + " " +
         std::to_string(icon ? static_cast<int>(icon->icon.index) : -1);
}

/// The visuals of column A, as texts.
std::vector<std::string> drawColumn(VisualResolver const& resolver, unsigned threadCount) {
  std::vector<std::string> drawn;
  resolver.visit({.range = {0, 0, many, 1}, .threadCount = threadCount},
                 [&](VisualCell const& cell) {
                   EXPECT_EQ(cell.resolved.cellInfo.getRowIndex(), drawn.size());
                   drawn.push_back(describe(cell.visuals));
                 });
  return drawn;
}

TEST(VisualThreads, AnyNumberOfThreadsGivesTheSame) {
  VisualTable table;
  fillColumn(table);
  table.addCondition("A1:A30000", "MOD(A1,5)=0", true);
  table.addVisual("A1:A30000", makeScale(threshold(Kind::Percentile, 10), threshold(Kind::Max)));
  table.addVisual("A1:A30000", TestSupport::makeBar()).condition =
      Formulas::parseExpr("MOD(A1,3)=0");
  table.addVisual("A1:A9 A20000:A25000", makeIcons());
  table.prepare();
  auto const onOne = drawColumn(*table.visuals, 1);
  EXPECT_EQ(onOne.size(), many);
  EXPECT_EQ(drawColumn(*table.visuals, 2), onOne);
  EXPECT_EQ(drawColumn(*table.visuals, 7), onOne);
}

/// Keeps the first thread that reads a value below the first row until a second one comes.
class MeetingPlace final : public TestSupport::ForwardingValueContextProvider {
public:
  using ForwardingValueContextProvider::ForwardingValueContextProvider;

  FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    if (cellInfo.getRowIndex() > 0) {
      meet();
    }
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }

  [[nodiscard]] bool haveMet() const { return _seen.size() > 1; }

private:
  void meet() const {
    std::unique_lock lock(_mutex);
    bool const isFirst = _seen.empty();
    _seen.insert(std::this_thread::get_id());
    _changed.notify_all();
    if (isFirst) {
      _changed.wait_for(lock, std::chrono::seconds(20), [&] { return haveMet(); });
    }
  }

  mutable std::mutex _mutex;
  mutable std::condition_variable _changed;
  mutable std::set<std::thread::id> _seen;
};

class VisualThreadsTest : public testing::Test {
protected:
  /// Resolves the visuals with values of this provider.
  VisualResolver makeResolver(ConditionalFormatters::ValueContextProvider const& provider) {
    _table.prepare();
    return VisualResolver(
        {.table = _table.table,
         .formats = _table.formats,
         .provider = provider,
         .conditionalFormats = _table.calculator->getConditionalFormatRefs(_table.table),
         .resolver = *_table.resolver,
         .styles = _table.styles});
  }

  VisualTable _table;
  MeetingPlace _meeting{std::make_unique<TestSupport::PlainValueContextProvider>(_table.table)};
};

TEST_F(VisualThreadsTest, VisualsAreDrawnByTheThreadsOfThePass) {
  fillColumn(_table);
  _table.addVisual("A1:A30000", makeScale(threshold(Kind::Number, 0), threshold(Kind::Number, 1)));
  auto const resolver = makeResolver(_meeting);
  drawColumn(resolver, 2);
  EXPECT_TRUE(_meeting.haveMet());
}

TEST_F(VisualThreadsTest, NumbersOfThresholdsAreCollectedByTheThreadsOfThePass) {
  fillColumn(_table);
  _table.addVisual("A1:A30000", makeScale());
  auto const resolver = makeResolver(_meeting);
  // One thread draws the only cell.
  resolver.visit({.range = {0, 0, 1, 1}, .threadCount = 2}, [](VisualCell const&) {});
  EXPECT_TRUE(_meeting.haveMet());
}

TEST(VisualThreads, ThresholdsOfChanceAreTheSameForAllThreads) {
  VisualTable table;
  for (unsigned long row = 0; row < many; ++row) {
    table.table.setValue(row, 0, FormulaModel::FormulaNumber{FloatNumber(0.5)});
  }
  table.addVisual("A1:A30000",
                  TestSupport::makeBar(threshold(Kind::Number, 0), formulaThreshold("1+RAND()")));
  table.prepare();
  auto const drawn = drawColumn(*table.visuals, 4);
  EXPECT_EQ(std::set<std::string>(drawn.begin(), drawn.end()).size(), 1U);
}

TEST(VisualThreads, AFailureEndsThePassAfterTheCellsBefore) {
  VisualTable table;
  fillColumn(table);
  table.addVisual("A20001:A30000", makeScale(formulaThreshold("1/0"), threshold(Kind::Max)));
  table.prepare();
  for (unsigned const threadCount : {1U, 3U}) {
    unsigned long visited = 0;
    EXPECT_THROW(table.visuals->visit({.range = {0, 0, many, 1}, .threadCount = threadCount},
                                      [&](VisualCell const& cell) {
                                        EXPECT_EQ(cell.resolved.cellInfo.getRowIndex(), visited);
                                        ++visited;
                                      }),
                 ThresholdError);
    EXPECT_EQ(visited, 20'000U);
  }
}

TEST(VisualThreads, FailuresThatAreSkippedComeWithTheirCells) {
  VisualTable table;
  fillColumn(table);
  table.addVisual("A10001:A20000", makeScale(formulaThreshold("1/0"), threshold(Kind::Max)));
  table.addVisual("A1:A15000", makeIcons());
  table.prepare();
  unsigned long visited = 0;
  table.visuals->visit(
      {.range = {0, 0, many, 1}, .threadCount = 3, .onFailure = TablePass::OnFailure::Skip},
      [&](VisualCell const& cell) {
        bool const fails = visited >= 10'000 && visited < 20'000;
        EXPECT_EQ(cell.failure != nullptr, fails);
        EXPECT_EQ(cell.visuals.icon.has_value(), visited < 15'000);
        ++visited;
      });
  EXPECT_EQ(visited, many);
}

}  // namespace
}  // namespace Zorv::Visuals
