// Whole tables on two threads against one.

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <limits>
#include <string>
#include <thread>

#include <benchmark/benchmark.h>

#include "BenchTable.h"
#include "Benchmarks.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"

namespace Zorv::Benchmarks {

namespace {

using ConditionalFormatters::TableResolver;

/// A way to resolve all cells of a table.
using Resolve = std::size_t (*)(BenchTable const& table, unsigned threadCount);

/// As an export does that takes rectangles of one style.
std::size_t resolveColumnAsRuns(BenchTable const& table, unsigned threadCount) {
  auto const resolver = table.getCalculator().prepare(table.getStyles(), table.getTable());
  return resolver.resolveRuns({.range = table.getColumn(), .threadCount = threadCount}).size();
}

std::size_t resolveRows(BenchTable const& table, unsigned long firstRow, unsigned long endRow) {
  std::size_t styled = 0;
  auto const resolver = table.getCalculator().prepare(table.getStyles(), table.getTable());
  resolver.visit(
      {.range = {firstRow, 0, endRow, 1}},
      [&](ConditionalFormatters::ResolvedCell const& cell) { styled += cell.style ? 1 : 0; });
  return styled;
}

/// Best speed of the cores: two threads that share nothing, each with one half of the column.
std::size_t resolveColumnApart(BenchTable const& table, unsigned threadCount) {
  unsigned long const end = table.getCellCount();
  unsigned long const middle = threadCount == 1 ? end : end / 2;
  std::size_t styledBelow = 0;
  std::jthread below;
  if (middle != end) {
    below = std::jthread([&] { styledBelow = resolveRows(table, middle, end); });
  }
  std::size_t const styledAbove = resolveRows(table, 0, middle);
  below = std::jthread();  // waits
  return styledAbove + styledBelow;
}

double measurePass(Resolve resolve, BenchTable const& table, unsigned threadCount) {
  auto const start = std::chrono::steady_clock::now();
  benchmark::DoNotOptimize(resolve(table, threadCount));
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// One thread and two take turns, since what else a machine does changes from one moment to the
/// next; of each the fastest pass counts.
void measureTurns(benchmark::State& state, Scenario const& scenario, Resolve resolve) {
  BenchTable table(static_cast<std::size_t>(state.range(0)));
  scenario.addFormats(table);
  table.makeCalculator();
  double withOne = std::numeric_limits<double>::infinity();
  double withTwo = withOne;
  for (auto _ : state) {
    withOne = std::min(withOne, measurePass(resolve, table, 1));
    withTwo = std::min(withTwo, measurePass(resolve, table, 2));
  }
  state.counters["withOne"] = withOne;
  state.counters["withTwo"] = withTwo;
}

void registerTurns(char const* way, Scenario const& scenario, Resolve resolve) {
  std::string name = "threads/";
  name += way;
  name += '/';
  name += scenario.name;
  benchmark::RegisterBenchmark(
      name.c_str(),
      [&scenario, resolve](benchmark::State& state) { measureTurns(state, scenario, resolve); })
      ->Arg(1'000'000)
      ->Iterations(4)
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerThreads() {
  registerTurns("apart", getScenarios().front(), resolveColumnApart);
  for (Scenario const& scenario : getScenarios()) {
    registerTurns("visitor", scenario, resolveColumn);
    registerTurns("runs", scenario, resolveColumnAsRuns);
  }
}

}  // namespace Zorv::Benchmarks
