// Whole tables: one format, or several, over every cell of a column.

#include <cstddef>
#include <string>
#include <thread>

#include <benchmark/benchmark.h>
#include <boost/variant/get.hpp>

#include "BenchTable.h"
#include "Benchmarks.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"

namespace Zorv::Benchmarks {

namespace {

using ConditionalFormatters::TableResolver;

/// Everything that an export does: prepare the resolver, then resolve each cell once.
std::size_t resolveColumn(BenchTable const& table, unsigned threadCount) {
  std::size_t styled = 0;
  auto const resolver = table.getCalculator().prepare(table.getStyles(), table.getTable());
  resolver.visit(
      table.getColumn(), TableResolver::Positions::Existing,
      [&](DOM::CellInfo const&, DOM::SharedCellStylePtr const& style) { styled += style ? 1 : 0; },
      threadCount);
  return styled;
}

/// The same for an export that takes rectangles of one style.
std::size_t resolveColumnAsRuns(BenchTable const& table, unsigned threadCount) {
  auto const resolver = table.getCalculator().prepare(table.getStyles(), table.getTable());
  return resolver.resolveRuns(table.getColumn(), TableResolver::Positions::Existing, threadCount)
      .size();
}

/// What two cores can give at best: each resolves one half of the column, with a resolver of its
/// own.
std::size_t resolveHalvesApart(BenchTable const& table) {
  auto const resolveHalf = [&table](unsigned long firstRow, unsigned long endRow) {
    std::size_t styled = 0;
    auto const resolver = table.getCalculator().prepare(table.getStyles(), table.getTable());
    resolver.visit({firstRow, 0, endRow, 1}, TableResolver::Positions::Existing,
                   [&](DOM::CellInfo const&, DOM::SharedCellStylePtr const& style) {
                     styled += style ? 1 : 0;
                   });
    return styled;
  };
  unsigned long const middle = table.getCellCount() / 2;
  std::size_t styledAbove = 0;
  std::jthread above([&] { styledAbove = resolveHalf(0, middle); });
  std::size_t const styledBelow = resolveHalf(middle, table.getCellCount());
  above.join();
  return styledAbove + styledBelow;
}

using Resolve = std::size_t (*)(BenchTable const& table, unsigned threadCount);

void measureScenario(benchmark::State& state, Scenario const& scenario, Resolve resolve,
                     unsigned threadCount) {
  auto const cellCount = static_cast<std::size_t>(state.range(0));
  BenchTable table(cellCount);
  scenario.addFormats(table);
  table.makeCalculator();
  for (auto _ : state) {
    benchmark::DoNotOptimize(resolve(table, threadCount));
  }
  state.counters["perCell"] = benchmark::Counter(
      static_cast<double>(cellCount),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void measureHalvesApart(benchmark::State& state) {
  BenchTable table(static_cast<std::size_t>(state.range(0)));
  getScenarios().front().addFormats(table);
  table.makeCalculator();
  for (auto _ : state) {
    benchmark::DoNotOptimize(resolveHalvesApart(table));
  }
}

/// The floor: what "greater" compares, over a plain vector of values.
void measureHandWrittenLoop(benchmark::State& state) {
  BenchTable const table(static_cast<std::size_t>(state.range(0)));
  auto const values = table.getValues();
  double limit = 46400;
  for (auto _ : state) {
    benchmark::DoNotOptimize(limit);
    std::size_t greater = 0;
    for (FormulaValue const& value : values) {
      auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value);
      greater += number != nullptr && number->value.get() > limit ? 1 : 0;
    }
    benchmark::DoNotOptimize(greater);
  }
  state.counters["perCell"] = benchmark::Counter(
      static_cast<double>(state.range(0)),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void registerScenario(std::string name, Scenario const& scenario, Resolve resolve,
                      unsigned threadCount) {
  name += '/';
  name += scenario.name;
  name += "/threads:";
  name += std::to_string(threadCount);
  benchmark::RegisterBenchmark(name.c_str(),
                               [&scenario, resolve, threadCount](benchmark::State& state) {
                                 measureScenario(state, scenario, resolve, threadCount);
                               })
      ->Arg(10'000)
      ->Arg(100'000)
      ->Arg(1'000'000)
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerWholeTable() {
  benchmark::RegisterBenchmark("loop/greater", measureHandWrittenLoop)
      ->Arg(10'000)
      ->Arg(100'000)
      ->Arg(1'000'000)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("apart/greater", measureHalvesApart)
      ->Arg(1'000'000)
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
  for (Scenario const& scenario : getScenarios()) {
    for (unsigned const threadCount : {1U, 2U}) {
      registerScenario("table", scenario, resolveColumn, threadCount);
      registerScenario("runs", scenario, resolveColumnAsRuns, threadCount);
    }
  }
}

}  // namespace Zorv::Benchmarks
