// Whole tables: one format, or several, over every cell of a column, on one thread.

#include <cstddef>
#include <string>

#include <benchmark/benchmark.h>
#include <boost/variant/get.hpp>

#include "BenchTable.h"
#include "Benchmarks.h"

namespace Zorv::Benchmarks {

namespace {

void measureScenario(benchmark::State& state, Scenario const& scenario) {
  auto const cellCount = static_cast<std::size_t>(state.range(0));
  BenchTable table(cellCount);
  scenario.addFormats(table);
  table.makeCalculator();
  for (auto _ : state) {
    benchmark::DoNotOptimize(resolveColumn(table, 1));
  }
  state.counters["perCell"] = benchmark::Counter(
      static_cast<double>(cellCount),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
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

}  // namespace

void registerWholeTable() {
  auto const withSizes = [](benchmark::internal::Benchmark* measured) {
    measured->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
  };
  benchmark::RegisterBenchmark("loop/greater", measureHandWrittenLoop)->Apply(withSizes);
  for (Scenario const& scenario : getScenarios()) {
    std::string name = "table/";
    name += scenario.name;
    benchmark::RegisterBenchmark(name.c_str(), [&scenario](benchmark::State& state) {
      measureScenario(state, scenario);
    })->Apply(withSizes);
  }
}

}  // namespace Zorv::Benchmarks
