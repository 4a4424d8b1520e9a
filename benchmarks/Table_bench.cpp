// The reference table itself: edits of rows and columns, and walks over one column.

#include <cstddef>
#include <utility>

#include <benchmark/benchmark.h>

#include "Benchmarks.h"
#include "DOM/Table.h"

namespace Zorv::Benchmarks {

namespace {

/// Puts a number into each cell of some rows and columns.
void fill(DOM::Table& table, unsigned long cellCount, unsigned long columnCount) {
  for (unsigned long row = 0; row < cellCount / columnCount; ++row) {
    for (unsigned long column = 0; column < columnCount; ++column) {
      table.setValue(row, column, FormulaModel::FormulaNumber{FloatNumber(1)});
    }
  }
}

/// Edits at the row or column in the middle, one for each iteration.
using TableEdit = void (*)(DOM::Table&, unsigned long middle);

void measureRows(benchmark::State& state, TableEdit edit) {
  constexpr unsigned long columnCount = 50;
  auto const cellCount = static_cast<unsigned long>(state.range(0));
  DOM::Table table;
  fill(table, cellCount, columnCount);
  for (auto _ : state) {
    edit(table, cellCount / columnCount / 2);
  }
}

/// As many columns as the second argument says.
void measureColumns(benchmark::State& state, TableEdit edit) {
  auto const columnCount = static_cast<unsigned long>(state.range(1));
  DOM::Table table;
  fill(table, static_cast<unsigned long>(state.range(0)), columnCount);
  for (auto _ : state) {
    edit(table, columnCount / 2);
  }
}

/// Visits the cells of a column, `beside` columns to the right of an empty one amid the others.
void measureWalk(benchmark::State& state, unsigned long beside) {
  auto const columnCount = static_cast<unsigned long>(state.range(1));
  DOM::Table table;
  fill(table, static_cast<unsigned long>(state.range(0)), columnCount);
  table.insertColumns(columnCount / 2, 1);
  unsigned long const column = columnCount / 2 + beside;
  std::size_t visited = 0;
  for (auto _ : state) {
    auto const [begin, end] =
        table.getRangeIterators({0, column, DOM::Table::rowCount, column + 1});
    for (auto cell = begin; cell != end; ++cell) {
      ++visited;
    }
    benchmark::DoNotOptimize(visited);
  }
}

void registerEdits() {
  using Measure = void (*)(benchmark::State&, TableEdit);
  auto const add = [](char const* name, Measure measure, TableEdit edit) {
    return benchmark::RegisterBenchmark(name,
                                        [=](benchmark::State& state) { measure(state, edit); })
        ->Unit(benchmark::kMicrosecond);
  };
  auto const addRows = [&](char const* name, TableEdit edit) {
    add(name, measureRows, edit)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);
  };
  auto const addColumns = [&](char const* name, TableEdit edit) {
    add(name, measureColumns, edit)->ArgsProduct({{10'000, 100'000, 1'000'000}, {2, 10}});
  };
  addRows("rows/insertAndDelete", [](DOM::Table& table, unsigned long row) {
    table.insertRows(row, 1);
    table.deleteRows(row, 1);
  });
  addRows("rows/move", [](DOM::Table& table, unsigned long row) { table.moveRows(1, 1, row); });
  addColumns("columns/insertAndDelete", [](DOM::Table& table, unsigned long column) {
    table.insertColumns(column, 1);
    table.deleteColumns(column, 1);
  });
  addColumns("columns/move", [](DOM::Table& table, unsigned long column) {
    table.moveColumns(column, 1, column - 1);
  });
}

}  // namespace

void registerTable() {
  registerEdits();
  using Walk = std::pair<char const*, unsigned long>;
  for (auto const& [name, beside] : {Walk("walk/filledColumn", 1), Walk("walk/emptyColumn", 0)}) {
    benchmark::RegisterBenchmark(
        name, [beside = beside](benchmark::State& state) { measureWalk(state, beside); })
        ->ArgsProduct({{10'000, 100'000, 1'000'000}, {2, 10}})
        ->Unit(benchmark::kMicrosecond);
  }
}

}  // namespace Zorv::Benchmarks
