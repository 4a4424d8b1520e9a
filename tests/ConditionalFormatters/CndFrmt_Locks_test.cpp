#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <latch>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "ConditionalFormatters/CalculatorTest.h"
#include "support/RecordingServices.h"

// What the calculator's two locks block, and what they do not.
namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;

/// Holds one thread until another opens it.
class Gate {
public:
  void enter() {
    _entered.count_down();
    _opened.wait();
  }
  void awaitEntry() const { _entered.wait(); }
  void open() { _opened.count_down(); }

private:
  std::latch _entered{1};
  std::latch _opened{1};
};

/// Where a first thread is held.
enum class Held {
  InCachedResolution,
  InCachedResolutionWithoutCell,
  InUncachedResolution,
  InListingOfFormats,
};

/// Call that a second thread makes meanwhile.
enum class Call {
  ClearCellStyles,
  ClearFormats,
  ListFormats,
  StyleOfCachedCell,
  StyleOfNewCell,
  StyleWithoutCell,
  StyleWithoutFormats,
  Resolve,
};

constexpr Call allCalls[] = {Call::ClearCellStyles,     Call::ClearFormats,
                             Call::ListFormats,         Call::StyleOfCachedCell,
                             Call::StyleOfNewCell,      Call::StyleWithoutCell,
                             Call::StyleWithoutFormats, Call::Resolve};

bool waits(Held held, Call call) {
  switch (held) {
    case Held::InCachedResolution:  // both hold the lock of the cell styles
    case Held::InCachedResolutionWithoutCell:
      return call == Call::ClearCellStyles || call == Call::StyleOfCachedCell ||
             call == Call::StyleOfNewCell || call == Call::StyleWithoutCell;
    case Held::InUncachedResolution:  // holds no lock
      return false;
    case Held::InListingOfFormats:  // holds the lock of the formats
      return call == Call::ClearFormats || call == Call::ListFormats ||
             call == Call::StyleOfNewCell || call == Call::StyleWithoutCell ||
             call == Call::Resolve;
  }
  return false;
}

class LockTest : public CalculatorTest, public testing::WithParamInterface<std::tuple<Held, Call>> {
protected:
  LockTest() {
    for (unsigned long const row : {heldRow, cachedRow, newRow}) {
      host.table.setValue(row, 0, number(1));
    }
    withoutFormats.setValue(0, 0, number(1));
    addFormat(host.table, {{0, 0, 1, 1}}, holdsAlways(), addFont(1, true));
    addFormat(listed, {{0, 0, 1, 1}}, holdsAlways());
    services.convertRangesBy([this](DOM::Table const& table) {
      if (&table == &listed) {
        gate.enter();
      }
      return std::vector{TableRange{0, 0, 10, 1}};
    });
    // Throws once it may go on: nothing that the second thread cleared is looked at again.
    provider->answerBy([this](DOM::CellInfo const& cellInfo) -> FormulaValue {
      if (cellInfo.getRowIndex() == heldRow || cellInfo.getRowIndex() == heldEmptyRow) {
        gate.enter();
        throw std::out_of_range("no value");
      }
      return number(1);
    });
    (void)getStyle(cachedRow, 0);
  }

  void hold(Held held) {
    switch (held) {
      case Held::InCachedResolution:
        EXPECT_THROW((void)getStyle(heldRow, 0), std::out_of_range);
        return;
      case Held::InCachedResolutionWithoutCell:
        EXPECT_THROW((void)getStyle(heldEmptyRow, 0), std::out_of_range);
        return;
      case Held::InUncachedResolution:
        EXPECT_THROW((void)resolve(heldRow, 0), std::out_of_range);
        return;
      case Held::InListingOfFormats:
        (void)calculator->getConditionalFormatRefs(listed);
        return;
    }
  }

  void perform(Call call) const {
    switch (call) {
      case Call::ClearCellStyles:
        calculator->clearCellStylesCache();
        return;
      case Call::ClearFormats:
        calculator->clearTablesRangesCache();
        return;
      case Call::ListFormats:
        EXPECT_EQ(calculator->getConditionalFormatRefs(host.table).size(), 1U);
        return;
      case Call::StyleOfCachedCell:
        EXPECT_NE(getStyle(cachedRow, 0), nullptr);
        return;
      case Call::StyleOfNewCell:
        EXPECT_NE(getStyle(newRow, 0), nullptr);
        return;
      case Call::StyleWithoutCell:
        EXPECT_NE(getStyle(emptyRow, 0), nullptr);
        return;
      case Call::StyleWithoutFormats:
        EXPECT_EQ(calculator->getConditionalFormatCellStyle(host.styles,
                                                            withoutFormats.getCellInfo(0, 0)),
                  nullptr);
        return;
      case Call::Resolve:
        EXPECT_NE(resolve(newRow, 0), nullptr);
        return;
    }
  }

  static constexpr unsigned long heldRow = 0;
  static constexpr unsigned long cachedRow = 1;
  static constexpr unsigned long newRow = 2;
  static constexpr unsigned long emptyRow = 3;
  static constexpr unsigned long heldEmptyRow = 4;

  DOM::Table listed;
  DOM::Table withoutFormats;
  Gate gate;
  RecordingServices services{host.journal};
};

TEST_P(LockTest, BlocksWhatNeedsTheSameCacheAndNothingElse) {
  auto const [held, call] = GetParam();
  auto holder = std::async(std::launch::async, [&, held = held] { hold(held); });
  gate.awaitEntry();
  auto second = std::async(std::launch::async, [&, call = call] { perform(call); });
  // A call that is to wait and does not is done long before the first time is over; one that is not
  // to wait has the second one, however slow the machine is.
  using namespace std::chrono_literals;
  auto const status = second.wait_for(waits(held, call) ? 50ms : 10s);
  EXPECT_EQ(status == std::future_status::timeout, waits(held, call));
  gate.open();
  second.get();
  holder.get();
}

std::string nameOf(testing::TestParamInfo<std::tuple<Held, Call>> const& info) {
  static constexpr char const* heldNames[] = {"InCachedResolution", "InCachedResolutionWithoutCell",
                                              "InUncachedResolution", "InListingOfFormats"};
  static constexpr char const* callNames[] = {
      "ClearCellStyles", "ClearFormats",     "ListFormats",         "StyleOfCachedCell",
      "StyleOfNewCell",  "StyleWithoutCell", "StyleWithoutFormats", "Resolve"};
  auto const [held, call] = info.param;
  return std::string(heldNames[static_cast<int>(held)]) + callNames[static_cast<int>(call)];
}

INSTANTIATE_TEST_SUITE_P(
    Locks, LockTest,
    testing::Combine(testing::Values(Held::InCachedResolution, Held::InCachedResolutionWithoutCell,
                                     Held::InUncachedResolution, Held::InListingOfFormats),
                     testing::ValuesIn(allCalls)),
    nameOf);

}  // namespace
}  // namespace Zorv::ConditionalFormatters
