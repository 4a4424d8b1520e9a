#include "ConditionalFormatters/CndFrmt_CellWorker.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "Formulas/ParseExpr.h"
#include "support/PlainHost.h"

namespace Zorv::ConditionalFormatters {
namespace {

constexpr unsigned long workedRows = 30'000;

/// Report of a visit of one cell: its row, how many formats hold, and its number in the worker.
struct Visit {
  unsigned long row;
  std::size_t formatCount;
  std::size_t found;

  friend bool operator==(Visit const&, Visit const&) = default;
};

/// Finds the row of each cell times ten.
class TenfoldWorker final : public CellWorker {
public:
  /// Throws at a row.
  TenfoldWorker(std::vector<Visit>& visits, unsigned long badRow, std::atomic<int>& alive)
      : _visits(visits), _badRow(badRow), _alive(alive) {
    ++_alive;
  }
  ~TenfoldWorker() override { --_alive; }

  std::unique_ptr<BlockFindings> beginBlock() override {
    auto findings = std::make_unique<Findings>(_visits);
    _found = &findings->found;
    return findings;
  }

  void work(ResolvedCell const& cell) override {
    if (cell.cellInfo.getRowIndex() == _badRow) {
      throw std::runtime_error("bad row");
    }
    _found->push_back(cell.cellInfo.getRowIndex() * 10 + cell.formats.size());
  }

private:
  struct Findings final : BlockFindings {
    explicit Findings(std::vector<Visit>& target) : visits(target) {}
    void visit(ResolvedCell const& cell) override {
      visits.push_back({cell.cellInfo.getRowIndex(), cell.formats.size(), found.at(next++)});
    }
    std::vector<Visit>& visits;
    std::vector<std::size_t> found;
    std::size_t next = 0;
  };

  std::vector<Visit>& _visits;
  unsigned long _badRow;
  std::atomic<int>& _alive;
  std::vector<std::size_t>* _found = nullptr;
};

/// A column of numbers in which every third has a format.
class CellWorkerTest : public testing::TestWithParam<unsigned> {
protected:
  CellWorkerTest() {
    for (unsigned long row = 0; row < workedRows; ++row) {
      _table.setValue(row, 0, FormulaModel::FormulaNumber{FloatNumber(static_cast<double>(row))});
    }
    _table.addConditionalFormat(
        {{0, 0, workedRows, 1}},
        DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::FormulaIsTrue,
                                            Formulas::parseExpr("MOD(A1,3)=0")),
        {});
  }

  void visitAll(unsigned long badRow = workedRows) {
    auto const resolver = _calculator.prepare(_styles, _table);
    resolver.visitWithWorkers({.range = {0, 0, workedRows, 1}, .threadCount = GetParam()}, [&] {
      return std::make_unique<TenfoldWorker>(_visits, badRow, _alive);
    });
  }

  /// The visits of the rows above one.
  static std::vector<Visit> expectUpTo(unsigned long endRow) {
    std::vector<Visit> visits;
    for (unsigned long row = 0; row < endRow; ++row) {
      std::size_t const formats = row % 3 == 0 ? 1 : 0;
      visits.push_back({row, formats, row * 10 + formats});
    }
    return visits;
  }

  DOM::Table _table;
  DOM::Styles _styles;
  ConditionalFormattingPropsCalculator _calculator{
      std::make_unique<TestSupport::PlainValueContextProvider>(_table)};
  std::vector<Visit> _visits;
  std::atomic<int> _alive = 0;
};

TEST_P(CellWorkerTest, CellsAreVisitedInOrderWithWhatWasFoundForThem) {
  visitAll();
  EXPECT_TRUE(std::ranges::equal(_visits, expectUpTo(workedRows)));
  EXPECT_EQ(_alive, 0);
}

TEST_P(CellWorkerTest, AnExceptionOfAWorkerEndsThePassAfterTheCellsBefore) {
  EXPECT_THROW(visitAll(20'123), std::runtime_error);
  EXPECT_TRUE(std::ranges::equal(_visits, expectUpTo(20'123)));
}

TEST_P(CellWorkerTest, AWorkerThatCannotBeMadeEndsThePass) {
  auto const resolver = _calculator.prepare(_styles, _table);
  EXPECT_THROW(resolver.visitWithWorkers(
                   {.range = {0, 0, workedRows, 1}, .threadCount = GetParam()},
                   []() -> std::unique_ptr<CellWorker> { throw std::runtime_error("no worker"); }),
               std::runtime_error);
}

INSTANTIATE_TEST_SUITE_P(Threads, CellWorkerTest, testing::Values(1U, 2U, 5U));

}  // namespace
}  // namespace Zorv::ConditionalFormatters
