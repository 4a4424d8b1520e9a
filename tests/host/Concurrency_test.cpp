#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <latch>
#include <memory>
#include <optional>
#include <random>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "DOM/SharedStyle.h"
#include "DOM/Table.h"
#include "OfficeUtils/Clock.h"
#include "OfficeUtils/DateTime.h"
#include "OfficeUtils/FormulaValueCast.h"

namespace Zorv {
namespace {

constexpr unsigned threadCount = 4;

/// Runs `work(index)` on several threads that start together.
void runTogether(std::function<void(unsigned)> const& work) {
  std::latch start(threadCount);
  std::vector<std::jthread> threads;
  for (unsigned index = 0; index < threadCount; ++index) {
    threads.emplace_back([&, index] {
      start.arrive_and_wait();
      work(index);
    });
  }
}

DOM::CellStyle makeStyle(unsigned fontSize) {
  DOM::RunProps props;
  props.fontSize = fontSize;
  DOM::CellStyle style;
  style.setRunProps(std::make_shared<DOM::RunProps const>(props));
  return style;
}

/// The pointers are released at once, so nearly every creation races with a release of the same
/// style.
TEST(SharedObjectFactoryConcurrency, CreationRacesWithTheLastRelease) {
  DOM::SharedObjectFactory const factory;
  runTogether([&](unsigned) {
    for (unsigned i = 0; i < 20'000; ++i) {
      auto const pointer = factory.create(makeStyle(i % 2));
      ASSERT_EQ((*pointer)->getRunProps()->fontSize, i % 2);
      auto const copy = pointer;
      ASSERT_EQ(copy, factory.create(makeStyle(i % 2)));
    }
  });
}

TEST(SharedObjectFactoryConcurrency, ALivingStyleIsTheOnlyOneOfItsContent) {
  DOM::SharedObjectFactory const factory;
  auto const kept = factory.create(makeStyle(1));
  runTogether([&](unsigned) {
    for (unsigned i = 0; i < 20'000; ++i) {
      ASSERT_EQ(factory.create(makeStyle(1)), kept);
    }
  });
}

TEST(SharedObjectFactoryConcurrency, ThreadsThatCreateEqualStylesAtOnceGetOneObject) {
  for (unsigned round = 0; round < 200; ++round) {
    DOM::SharedObjectFactory const factory;
    std::vector<DOM::SharedCellStylePtr> pointers(threadCount);
    runTogether([&](unsigned index) { pointers[index] = factory.create(makeStyle(round)); });
    for (auto const& pointer : pointers) {
      ASSERT_EQ(pointer, pointers.front());
    }
  }
}

TEST(SharedObjectFactoryConcurrency, PointersMayBeLetGoOnAnyThreadAfterTheFactory) {
  for (unsigned round = 0; round < 200; ++round) {
    auto factory = std::make_optional<DOM::SharedObjectFactory>();
    std::vector<std::vector<DOM::SharedCellStylePtr>> pointers(threadCount);
    for (unsigned i = 0; i < 40; ++i) {
      pointers[i % threadCount].push_back(factory->create(makeStyle(i % 5)));
    }
    factory.reset();
    runTogether([&](unsigned index) { pointers[index].clear(); });
  }
}

TEST(SharedObjectFactoryConcurrency, PointersAreHandedFromThreadToThread) {
  DOM::SharedObjectFactory const factory;
  auto const shared = factory.create(makeStyle(7));
  runTogether([&](unsigned index) {
    std::mt19937 generator(index);
    std::vector<DOM::SharedCellStylePtr> mine(8);
    for (unsigned i = 0; i < 20'000; ++i) {
      mine[generator() % mine.size()] =
          (generator() % 3 == 0) ? factory.create(makeStyle(7 + i % 3)) : shared;
    }
    for (auto const& pointer : mine) {
      ASSERT_TRUE(pointer == nullptr || (*pointer)->getRunProps()->fontSize >= 7.0);
    }
  });
}

TEST(ScopedClockConcurrency, ReadersSeeOneOfTheClocks) {
  using OfficeUtils::Clock;
  using OfficeUtils::ScopedClock;
  using namespace std::chrono_literals;
  Clock::TimePoint const outer(1h);
  Clock::TimePoint const inner(2h);
  ScopedClock const scope(outer);
  std::atomic<bool> stopped = false;
  std::jthread const writer([&] {
    while (!stopped) {
      ScopedClock const change(inner);
    }
  });
  runTogether([&](unsigned) {
    OfficeUtils::LocaleContext const locale;
    DOM::TimeZone const zone("Europe/Berlin");
    for (int i = 0; i < 5'000; ++i) {
      auto const moment = Clock::readCurrent();
      ASSERT_TRUE(moment == outer || moment == inner);
      ASSERT_EQ(OfficeUtils::DateTime::getNow(zone, locale).calculateDays().get(), 25569.0);
    }
  });
  stopped = true;
}

TEST(ScopedClockConcurrency, TheSystemsClockComesAndGoes) {
  using OfficeUtils::Clock;
  using OfficeUtils::ScopedClock;
  std::atomic<bool> stopped = false;
  std::jthread const writer([&] {
    while (!stopped) {
      ScopedClock const change(Clock::TimePoint{});
    }
  });
  auto const before =
      std::chrono::floor<Clock::TimePoint::duration>(std::chrono::system_clock::now());
  runTogether([&](unsigned) {
    for (int i = 0; i < 20'000; ++i) {
      auto const moment = Clock::readCurrent();
      ASSERT_TRUE(moment == Clock::TimePoint{} || moment >= before);
    }
  });
  stopped = true;
}

TEST(ValueServicesConcurrency, LocalesAndZonesAreReadAndCopiedByManyThreads) {
  using namespace std::chrono_literals;
  OfficeUtils::LocaleContext const locale("de-DE");
  DOM::TimeZone const zone("America/New_York");
  runTogether([&](unsigned index) {
    for (int i = 0; i < 3'000; ++i) {
      OfficeUtils::LocaleContext const itsLocale = locale;
      DOM::TimeZone const itsZone = zone;
      FormulaValue const number = FormulaModel::FormulaNumber{FloatNumber(0.5 + index)};
      std::string const text = OfficeUtils::FormulaValueCast::toString(number, itsLocale, nullptr);
      ASSERT_EQ(text, std::to_string(index) + ",5");
      ASSERT_TRUE(OfficeUtils::FormulaValueCast::toBool(
          FormulaModel::FormulaString{"wahr"}, itsLocale,
          OfficeUtils::FormulaValueCast::CastMode::Condition, false));
      // Winters and summers from 1970 on.
      auto const moment = OfficeUtils::Clock::TimePoint(i % 100 * 4383h);
      auto const offset = itsZone.toLocal(moment).time_since_epoch() - moment.time_since_epoch();
      ASSERT_TRUE(offset == -5h || offset == -4h);
    }
  });
}

TEST(TableConcurrency, ManyThreadsReadOneTable) {
  DOM::Table table;
  for (unsigned long row = 0; row < 1000; ++row) {
    table.setValue(row, row % 7, FormulaModel::FormulaNumber{FloatNumber(1.0)});
  }
  auto const ranges = std::vector{table.toRangeByID({0, 0, 1000, 7})};
  table.insertRows(500, 1);
  runTogether([&](unsigned) {
    for (int i = 0; i < 50; ++i) {
      auto const current = convertToTableRanges(table, ranges);
      ASSERT_EQ(current.size(), 1U);
      auto const [begin, end] = table.getRangeIterators(current.front());
      std::size_t count = 0;
      for (auto it = begin; it != end; ++it) {
        DOM::CellInfo const info = it.getCellInfo();
        ASSERT_EQ(info.getCellID().rowID, table.getRowID(info.getRowIndex()));
        auto const id = table.getID();
        ASSERT_FALSE(id < table.getID());
        ++count;
      }
      ASSERT_EQ(count, 1000U);
    }
  });
}

}  // namespace
}  // namespace Zorv
