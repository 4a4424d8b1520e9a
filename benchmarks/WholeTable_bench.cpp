// Whole tables: one format, or several, over every cell of a column, on one thread.

#include <cstddef>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <boost/variant/get.hpp>

#include "BenchTable.h"
#include "Benchmarks.h"
#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/ParseExpr.h"
#include "support/PlainHost.h"

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

/// View of an editor: 50 rows of 40 columns, under rules that colour whole rows by the text of one
/// column.
void measureRowRules(benchmark::State& state) {
  constexpr unsigned long rows = 50;
  constexpr unsigned long columns = 40;
  DOM::Table table;
  DOM::Styles styles;
  for (unsigned long row = 0; row < rows; ++row) {
    for (unsigned long column = 0; column < columns; ++column) {
      table.setValue(row, column, FormulaModel::FormulaNumber{FloatNumber(1)});
    }
    table.setValue(row, columns - 1, FormulaModel::FormulaString{"state " + std::to_string(row)});
  }
  for (long rule = 0; rule < state.range(0); ++rule) {
    table.addConditionalFormat(
        {{0, 0, rows, columns}},
        DOM::UnaryConditionalFormatOperator(
            DOM::UnaryConditionalFormatType::FormulaIsTrue,
            Formulas::parseExpr("$AN1=\"state " + std::to_string(rule) + "\"")),
        UUID());
  }
  ConditionalFormatters::ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<TestSupport::PlainValueContextProvider>(table));
  for (auto _ : state) {
    auto const resolver = calculator.prepare(styles, table);
    std::size_t holding = 0;
    resolver.visit(
        {.range = {0, 0, rows, columns}},
        [&](ConditionalFormatters::ResolvedCell const& cell) { holding += cell.formats.size(); });
    benchmark::DoNotOptimize(holding);
  }
}

/// The first view of a document: 2,000 cells under twelve rules over the whole column.
void measureFirstView(benchmark::State& state) {
  constexpr unsigned long viewed = 2'000;
  BenchTable table(static_cast<std::size_t>(state.range(0)));
  addTwelve(table);
  table.makeCalculator();
  unsigned long const firstRow = table.getCellCount() / 2;
  for (auto _ : state) {
    auto const resolver = table.getCalculator().prepare(table.getStyles(), table.getTable());
    std::size_t holding = 0;
    resolver.visit(
        {.range = {firstRow, 0, firstRow + viewed, 1}},
        [&](ConditionalFormatters::ResolvedCell const& cell) { holding += cell.formats.size(); });
    benchmark::DoNotOptimize(holding);
  }
}

}  // namespace

void registerWholeTable() {
  auto const withSizes = [](benchmark::internal::Benchmark* measured) {
    measured->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
  };
  benchmark::RegisterBenchmark("loop/greater", measureHandWrittenLoop)->Apply(withSizes);
  benchmark::RegisterBenchmark("view/rowRules", measureRowRules)
      ->Arg(30)
      ->Arg(300)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("view/first", measureFirstView)->Apply(withSizes);
  for (Scenario const& scenario : getScenarios()) {
    std::string name = "table/";
    name += scenario.name;
    benchmark::RegisterBenchmark(name.c_str(), [&scenario](benchmark::State& state) {
      measureScenario(state, scenario);
    })->Apply(withSizes);
  }
}

}  // namespace Zorv::Benchmarks
