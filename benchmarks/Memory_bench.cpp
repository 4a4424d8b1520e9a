// Memory: what the cache keeps for each remembered cell, and what a pass over a whole table takes.

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "BenchTable.h"
#include "Benchmarks.h"
#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_LiveResolver.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"

namespace Zorv::Benchmarks {

namespace {

using ConditionalFormatters::TableResolver;

double readAllocatedBytes() {
  auto const info = mallinfo2();
  return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

/// The most that was allocated at any of the moments at which it was asked to look.
class Peak {
public:
  void look() noexcept {
    constexpr std::size_t step = 1024;  // looking takes longer than resolving a cell
    if (++_calls % step == 0) {
      _bytes = std::max(_bytes, readAllocatedBytes());
    }
  }
  [[nodiscard]] double getBytes() const noexcept { return _bytes; }

private:
  std::size_t _calls = 0;
  double _bytes = 0;
};

/// Looks at the memory while values are read, also by conditions that collect them.
class WatchingProvider final : public TestSupport::ForwardingValueContextProvider {
public:
  WatchingProvider(DOM::Table const& table, Peak& peak)
      : ForwardingValueContextProvider(
            std::make_unique<TestSupport::PlainValueContextProvider>(table)),
        _peak(peak) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    _peak.look();
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }

private:
  Peak& _peak;
};

void measureCachedCells(benchmark::State& state) {
  auto const cellCount = static_cast<std::size_t>(state.range(0));
  BenchTable table(cellCount);
  getScenarios().front().addFormats(table);
  table.makeCalculator();
  double const before = readAllocatedBytes();
  for (auto _ : state) {
    for (std::size_t row = 0; row < cellCount; ++row) {
      benchmark::DoNotOptimize(table.getCalculator().getConditionalFormatCellStyle(
          table.getStyles(), table.getTable().getCellInfo(row, 0)));
    }
  }
  state.counters["keptPerCell"] = (readAllocatedBytes() - before) / static_cast<double>(cellCount);
}

void measurePass(benchmark::State& state, Scenario const& scenario) {
  auto const cellCount = static_cast<std::size_t>(state.range(0));
  BenchTable table(cellCount);
  scenario.addFormats(table);
  Peak peak;
  table.makeCalculator(std::make_unique<WatchingProvider>(table.getTable(), peak));
  double const before = readAllocatedBytes();
  for (auto _ : state) {
    auto const resolver = table.getCalculator().prepare(table.getStyles(), table.getTable());
    resolver.visit({.range = table.getColumn()}, [](ConditionalFormatters::ResolvedCell const&) {});
    state.counters["keptPerCell"] =
        (readAllocatedBytes() - before) / static_cast<double>(cellCount);
  }
  state.counters["peakPerCell"] = (peak.getBytes() - before) / static_cast<double>(cellCount);
}

/// A column whose values are kept to follow edits.
struct FollowedColumn {
  char const* name;
  FormulaValue (*valueOf)(std::size_t row);  ///< null for the values of the table
  bool withFormulas;                         ///< beside twelve rules, seven with formulas
};

FormulaValue differentNumber(std::size_t row) {
  return FormulaModel::FormulaNumber{FloatNumber(static_cast<double>(row) / 100)};
}
FormulaValue differentText(std::size_t row) {
  return FormulaModel::FormulaString{"Item " + std::to_string(row)};
}

/// State that a live resolver keeps of a column under twelve rules so that they follow edits.
void measureFollowed(benchmark::State& state, FollowedColumn const& column) {
  auto const cellCount = static_cast<std::size_t>(state.range(0));
  BenchTable table(cellCount);
  for (std::size_t row = 0; column.valueOf != nullptr && row < cellCount; ++row) {
    table.setValue(row, column.valueOf(row));
  }
  addTwelve(table);
  if (column.withFormulas) {
    addSevenFormulas(table);
  }
  table.makeCalculator();
  for (auto _ : state) {
    auto resolver = table.getCalculator().follow(table.getStyles(), table.getTable());
    double const before = readAllocatedBytes();
    while (resolver.prepareSome(std::chrono::milliseconds(10))) {
    }
    state.counters["keptPerCell"] =
        (readAllocatedBytes() - before) / static_cast<double>(cellCount);
  }
}

void registerFollowed() {
  for (FollowedColumn const& column : {FollowedColumn{"memory/followed/mixed", nullptr, false},
                                       {"memory/followed/numbers", differentNumber, false},
                                       {"memory/followed/texts", differentText, false},
                                       {"memory/followed/mixedFormulas", nullptr, true},
                                       {"memory/followed/textsFormulas", differentText, true}}) {
    benchmark::RegisterBenchmark(
        column.name, [column](benchmark::State& state) { measureFollowed(state, column); })
        ->Arg(1'000'000)
        ->Arg(800'000)  // hash tables that have just grown
        ->Iterations(1);
  }
}

}  // namespace

void registerMemory() {
  registerFollowed();
  benchmark::RegisterBenchmark("memory/cached", measureCachedCells)->Arg(100'000)->Iterations(1);
  for (Scenario const& scenario : getScenarios()) {
    std::string name = "memory/";
    name += scenario.name;
    benchmark::RegisterBenchmark(
        name.c_str(), [&scenario](benchmark::State& state) { measurePass(state, scenario); })
        ->Arg(100'000)
        ->Iterations(1);
  }
}

}  // namespace Zorv::Benchmarks
