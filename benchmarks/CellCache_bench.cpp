// Cell by cell: a remembered style against the least that the answer takes.

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/unordered_map.hpp>

#include "BenchTable.h"
#include "Benchmarks.h"
#include "DOM/SharedStyle.h"

namespace Zorv::Benchmarks {

namespace {

constexpr std::size_t visitStride = 7919;  // a prime: cells are not asked for in memory order

void measureHit(benchmark::State& state) {
  auto const cellCount = static_cast<std::size_t>(state.range(0));
  BenchTable table(cellCount);
  getScenarios().front().addFormats(table);
  table.makeCalculator();
  auto const& calculator = table.getCalculator();
  std::vector<DOM::CellInfo> cells;
  for (std::size_t row = 0; row < cellCount; ++row) {
    cells.push_back(table.getTable().getCellInfo(row, 0));
    benchmark::DoNotOptimize(
        calculator.getConditionalFormatCellStyle(table.getStyles(), cells.back()));
  }
  std::size_t row = 0;
  for (auto _ : state) {
    row = (row + visitStride) % cellCount;
    benchmark::DoNotOptimize(
        calculator.getConditionalFormatCellStyle(table.getStyles(), cells[row]));
  }
}

/// One recursive mutex locked and unlocked, one binary search over the tables, one look-up in a
/// hash map of the same size, one reference counted.
void measureFloor(benchmark::State& state) {
  auto const cellCount = static_cast<std::size_t>(state.range(0));
  using Key = std::pair<DOM::RowID, DOM::ColumnID>;
  boost::unordered_map<Key, DOM::SharedCellStylePtr> styles;
  DOM::SharedObjectFactory const factory;
  auto const style = factory.create({});
  BenchTable const table(cellCount);
  std::vector<DOM::CellInfo> cells;
  for (std::size_t row = 0; row < cellCount; ++row) {
    cells.push_back(table.getTable().getCellInfo(row, 0));
    DOM::CellID const id = cells.back().getCellID();
    styles.emplace(Key(id.rowID, id.columnID), style);
  }
  std::vector<UUID> const tables{table.getTable().getUUID()};
  std::recursive_mutex mutex;
  std::size_t row = 0;
  for (auto _ : state) {
    row = (row + visitStride) % cellCount;
    std::lock_guard const lock(mutex);
    DOM::CellID const id = cells[row].getCellID();
    auto const found = std::lower_bound(tables.begin(), tables.end(), id.tableUUID);
    benchmark::DoNotOptimize(found);
    DOM::SharedCellStylePtr const answer = styles.find(Key(id.rowID, id.columnID))->second;
    benchmark::DoNotOptimize(answer.get());
  }
}

}  // namespace

void registerCellCache() {
  using Measure = std::pair<char const*, void (*)(benchmark::State&)>;
  for (auto const& [name, measure] :
       {Measure("cell/floor", &measureFloor), Measure("cell/hit", &measureHit)}) {
    benchmark::RegisterBenchmark(name, measure)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);
  }
}

}  // namespace Zorv::Benchmarks
