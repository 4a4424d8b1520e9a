#include "tool/Output/ProgressBar.h"

#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

namespace Zorv::Tool {
namespace {

using std::chrono::milliseconds;

class ProgressBarTest : public testing::Test {
protected:
  ProgressBar makeBar(bool isTerminal = true) {
    return {_terminal, isTerminal, [this] { return _now; }};
  }

  /// Text written since the last call.
  std::string takeWritten() {
    std::string written = _terminal.str();
    _terminal.str({});
    return written;
  }

  std::ostringstream _terminal;
  ProgressBar::Clock::time_point _now;
};

TEST_F(ProgressBarTest, DrawsOverItself) {
  ProgressBar bar = makeBar();
  bar.begin("Sales", 200);
  _now += milliseconds(100);
  bar.show(50);
  EXPECT_EQ(takeWritten(), "\r[#####               ]  25 % Sales");
  _now += milliseconds(100);
  bar.show(200);
  EXPECT_EQ(takeWritten(), "\r[####################] 100 % Sales");
}

TEST_F(ProgressBarTest, DrawsTenTimesASecondAtMost) {
  ProgressBar bar = makeBar();
  bar.begin("Sales", 1000);
  int drawings = 0;
  for (std::uint64_t step = 1; step <= 1000; ++step) {
    _now += milliseconds(1);
    bar.show(step);
    drawings += takeWritten().empty() ? 0 : 1;
  }
  EXPECT_EQ(drawings, 10);
}

TEST_F(ProgressBarTest, IsGoneAfterItsEnd) {
  {
    ProgressBar bar = makeBar();
    bar.begin("Sales", 2);
    _now += milliseconds(100);
    bar.show(1);
    takeWritten();
  }
  EXPECT_EQ(takeWritten(), "\r" + std::string(34, ' ') + "\r");
}

TEST_F(ProgressBarTest, IsGoneAfterAnException) {
  EXPECT_THROW(
      {
        ProgressBar bar = makeBar();
        bar.begin("Sales", 2);
        _now += milliseconds(100);
        bar.show(1);
        throw std::runtime_error("the disk is full");
      },
      std::runtime_error);
  EXPECT_TRUE(takeWritten().ends_with("\r" + std::string(34, ' ') + "\r"));
}

TEST_F(ProgressBarTest, ClearingWritesNothingWhereNothingIsDrawn) {
  ProgressBar bar = makeBar();
  bar.begin("Sales", 2);
  bar.clear();
  EXPECT_EQ(takeWritten(), "");
  _now += milliseconds(100);
  bar.show(1);
  bar.clear();
  takeWritten();
  bar.clear();
  EXPECT_EQ(takeWritten(), "");
}

TEST_F(ProgressBarTest, AShorterLineLeavesNothingOfALongerOne) {
  ProgressBar bar = makeBar();
  bar.begin("Winter sales", 1);
  _now += milliseconds(100);
  bar.show(1);
  takeWritten();
  bar.begin("Sums", 1);
  EXPECT_EQ(takeWritten(), "\r" + std::string(41, ' ') + "\r");
}

TEST_F(ProgressBarTest, WritesNothingWhereThereIsNoTerminal) {
  {
    ProgressBar bar = makeBar(false);
    bar.begin("Sales", 2);
    _now += milliseconds(1000);
    bar.show(1);
    bar.clear();
  }
  EXPECT_EQ(takeWritten(), "");
}

TEST_F(ProgressBarTest, FitsOneLineWhateverTheName) {
  ProgressBar bar = makeBar();
  bar.begin("a\tname " + std::string(200, 'x'), 0);
  _now += milliseconds(100);
  bar.show(7);
  EXPECT_EQ(takeWritten(), "\r[####################] 100 % a name " + std::string(33, 'x'));
}

}  // namespace
}  // namespace Zorv::Tool
