// Documents that are edited: what an edit and the view after it cost, by a resolver that follows
// changes and by a new one for each edit. Twelve rules of all kinds over one column, 2,000 cells in
// sight.

#include <chrono>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/variant/get.hpp>

#include "BenchTable.h"
#include "Benchmarks.h"
#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_LiveResolver.h"
#include "ConditionalFormatters/CndFrmt_LiveView.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"

namespace Zorv::Benchmarks {

namespace {

using ConditionalFormatters::LiveResolver;
using ConditionalFormatters::LiveView;
using ConditionalFormatters::ResolvedCell;

constexpr unsigned long viewedCells = 2'000;

/// How edits come.
struct EditKind {
  char const* name;
  std::size_t cellCount;  ///< of one edit, one below the other
  double unit;            ///< numbers are multiples of it
};

/// A column under twelve rules, and random edits of it.
class EditedColumn {
public:
  EditedColumn(std::size_t cellCount, EditKind const& kind) : _kind(kind), _table(cellCount) {
    if (kind.unit != 1) {
      for (unsigned long row = 0; row < cellCount; ++row) {
        edit(row);
      }
    }
    addTwelve(_table);
    _table.makeCalculator();
  }

  [[nodiscard]] BenchTable const& getTable() const noexcept { return _table; }
  [[nodiscard]] TableRange getView() const noexcept {
    unsigned long const firstRow = _table.getCellCount() / 2;
    return {firstRow, 0, firstRow + viewedCells, 1};
  }

  /// Sets the next cells, and gives their area.
  TableRange edit() {
    std::size_t const first = _random() % (_table.getCellCount() - _kind.cellCount);
    for (std::size_t row = first; row < first + _kind.cellCount; ++row) {
      edit(row);
    }
    return {first, 0, first + _kind.cellCount, 1};
  }

private:
  void edit(unsigned long row) {
    auto const drawn = static_cast<double>(_random() % _table.getCellCount());
    _table.setValue(
        row, _random() % 5 == 0
                 ? FormulaValue(FormulaModel::FormulaString{
                       "Item " + std::to_string(static_cast<long>(drawn))})
                 : FormulaValue(FormulaModel::FormulaNumber{FloatNumber(drawn * _kind.unit)}));
  }

  EditKind _kind;
  BenchTable _table;
  std::mt19937 _random{1};
};

/// An edit, and the cells in sight that look different, by a resolver that follows changes.
void measureFollowedEdit(benchmark::State& state, EditKind const& kind) {
  EditedColumn column(static_cast<std::size_t>(state.range(0)), kind);
  BenchTable const& table = column.getTable();
  LiveResolver resolver = table.getCalculator().follow(table.getStyles(), table.getTable());
  LiveView view(resolver);
  view.show(column.getView());
  std::size_t visited = 0;
  auto const paint = [&](ResolvedCell const& /*cell*/) { ++visited; };
  view.refresh(paint);
  while (resolver.prepareSome(std::chrono::milliseconds(10))) {
  }
  for (auto _ : state) {
    TableRange const area = column.edit();
    benchmark::DoNotOptimize(
        resolver.apply({ConditionalFormatters::ValuesChanged{&table.getTable(), {area}}}));
    view.refresh(paint);
  }
  benchmark::DoNotOptimize(visited);
}

/// The same by a new resolver for each edit, which visits all cells in sight.
void measureEditAnew(benchmark::State& state, EditKind const& kind) {
  EditedColumn column(static_cast<std::size_t>(state.range(0)), kind);
  BenchTable const& table = column.getTable();
  std::size_t holding = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(column.edit());
    auto const resolver = table.getCalculator().prepare(table.getStyles(), table.getTable());
    resolver.visit({.range = column.getView()},
                   [&](ResolvedCell const& cell) { holding += cell.formats.size(); });
  }
  benchmark::DoNotOptimize(holding);
}

}  // namespace

void registerLive() {
  static EditKind const kinds[] = {{"edit", 1, 1}, {"editCents", 1, 0.01}, {"paste", 1'000, 1}};
  auto const withSizes = [](benchmark::internal::Benchmark* measured) {
    measured->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
  };
  for (EditKind const& kind : kinds) {
    std::string name = "live/";
    name += kind.name;
    benchmark::RegisterBenchmark(name.c_str(), [&kind](benchmark::State& state) {
      measureFollowedEdit(state, kind);
    })->Apply(withSizes);
    name += "Anew";
    benchmark::RegisterBenchmark(name.c_str(), [&kind](benchmark::State& state) {
      measureEditAnew(state, kind);
    })->Apply(withSizes);
  }
}

}  // namespace Zorv::Benchmarks
