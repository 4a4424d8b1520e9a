#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "DOM/Table.h"
#include "support/CountingValueContextProvider.h"
#include "support/Documents.h"
#include "support/Threads.h"
#include "support/Values.h"

// Promises of concurrency. The scaffolding also runs on one thread.
namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;

constexpr unsigned long cellCount = 60;

/// Numbers in one column, of which the upper ten, the lower half and the last are formatted.
class CalculatorConcurrencyTest : public testing::TestWithParam<std::size_t> {
protected:
  CalculatorConcurrencyTest() {
    TableRange const column{0, 0, cellCount, 1};
    for (unsigned long row = 0; row < cellCount; ++row) {
      table.setValue(row, 0, number(static_cast<double>(row)));
    }
    using DOM::AboveAverageConditionalFormatType;
    using DOM::TopBottomConditionalFormatType;
    addFormat(
        table, {column},
        DOM::TopBottomConditionalFormatOperator(TopBottomConditionalFormatType::Top, 10, false),
        addSize(1, 10.0));
    addFormat(table, {column},
              DOM::AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Below),
              addSize(2, 20.0));
    addFormat(table, {{cellCount - 1, 0, cellCount, 1}},
              DOM::UniquenessConditionalFormatOperator{DOM::UniquenessType::Unique},
              addSize(3, 30.0));
  }

  UUID addSize(unsigned char uuid, double size) {
    addStyle(styles, makeUUID(uuid))
        .setRunProps(
            makeProps<DOM::RunProps>([&](DOM::RunProps& props) { props.fontSize = size; }));
    return makeUUID(uuid);
  }

  /// The font size that the formats give a cell; 0 where they give it no style.
  static double sizeOf(DOM::SharedCellStylePtr const& style) {
    return style ? (*style)->getRunProps()->fontSize.value_or(-1) : 0.0;
  }
  static double expectedSizeAt(unsigned long row) {
    return row >= cellCount - 10 ? 10.0 : row < cellCount / 2 ? 20.0 : 0.0;
  }

  [[nodiscard]] DOM::SharedCellStylePtr resolve(unsigned long row) const {
    return calculator.resolve(styles, table.getCellInfo(row, 0));
  }
  [[nodiscard]] DOM::SharedCellStylePtr getStyle(unsigned long row) const {
    return calculator.getConditionalFormatCellStyle(styles, table.getCellInfo(row, 0));
  }

  DOM::Table table;
  DOM::Styles styles;
  std::atomic<std::size_t> reads = 0;
  ConditionalFormattingPropsCalculator const calculator{
      std::make_unique<CountingValueContextProvider>(table, reads)};
};

TEST_P(CalculatorConcurrencyTest, ACellIsResolvedOnceHoweverManyThreadsAskForIt) {
  for (unsigned long row = 0; row < cellCount; ++row) {
    (void)resolve(row);
  }
  std::size_t const readsOfOneRound = reads.exchange(0);
  runOnThreads(GetParam(), [&](std::size_t) {
    for (unsigned long row = 0; row < cellCount; ++row) {
      EXPECT_EQ(sizeOf(getStyle(row)), expectedSizeAt(row)) << row;
    }
  });
  EXPECT_EQ(reads, readsOfOneRound);
}

TEST_P(CalculatorConcurrencyTest, ResolvingFromManyThreadsGivesTheSameStyles) {
  runOnThreads(GetParam(), [&](std::size_t) {
    for (unsigned long row = 0; row < cellCount; ++row) {
      EXPECT_EQ(sizeOf(resolve(row)), expectedSizeAt(row)) << row;
    }
  });
}

TEST_P(CalculatorConcurrencyTest, TheFormatsOfATableAreListedOnce) {
  std::vector<ConditionalFormatRefs const*> lists(GetParam());
  runOnThreads(GetParam(), [&](std::size_t thread) {
    lists[thread] = &calculator.getConditionalFormatRefs(table);
  });
  for (auto const* list : lists) {
    EXPECT_EQ(list, lists.front());
    EXPECT_EQ(list->size(), 3U);
  }
}

TEST_P(CalculatorConcurrencyTest, CachedCellsMayBeAskedForWhileTheCellStylesAreCleared) {
  std::vector<DOM::SharedCellStylePtr> snapshot;
  for (unsigned long row = 0; row < cellCount; ++row) {
    snapshot.push_back(resolve(row));
  }
  runOnThreads(GetParam(), [&](std::size_t thread) {
    for (unsigned long i = 0; i < 4 * cellCount; ++i) {
      unsigned long const row = (i * 7 + thread * 13) % cellCount;
      // As long as the snapshot lives, equal styles are the same object.
      EXPECT_EQ(getStyle(row), snapshot[row]);
      if (thread == 0 && i % 20 == 0) {
        calculator.clearCellStylesCache();
      }
    }
  });
}

TEST_P(CalculatorConcurrencyTest, StylesDieAndAreMadeAgain) {
  runOnThreads(GetParam(), [&](std::size_t thread) {
    for (unsigned long i = 0; i < 4 * cellCount; ++i) {
      unsigned long const row = (i * 11 + thread) % cellCount;
      bool const cached = (i + thread) % 2 == 0;
      EXPECT_EQ(sizeOf(cached ? getStyle(row) : resolve(row)), expectedSizeAt(row));
      calculator.clearCellStylesCache();
    }
  });
}

TEST_P(CalculatorConcurrencyTest, ManyTablesFillTheCachesTogether) {
  std::vector<std::unique_ptr<DOM::Table>> tables(GetParam());
  for (auto& other : tables) {
    other = std::make_unique<DOM::Table>();
    other->setValue(0, 0, number(1));
    addFormat(*other, {{0, 0, 1, 1}},
              DOM::UniquenessConditionalFormatOperator{DOM::UniquenessType::Unique}, makeUUID(1));
  }
  runOnThreads(GetParam(), [&](std::size_t thread) {
    for (std::size_t i = 0; i < tables.size(); ++i) {
      auto const& other = *tables[(i + thread) % tables.size()];
      EXPECT_EQ(sizeOf(calculator.getConditionalFormatCellStyle(styles, other.getCellInfo(0, 0))),
                10.0);
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Threads, CalculatorConcurrencyTest, testing::Values(1, 2, 6));

}  // namespace
}  // namespace Zorv::ConditionalFormatters
