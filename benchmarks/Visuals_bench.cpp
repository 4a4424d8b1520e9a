// Colour scales, data bars and icon sets: one over every cell of a column, on one thread and on
// two.

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

#include "BenchTable.h"
#include "Benchmarks.h"
#include "support/PlainHost.h"
#include "visuals/VisualResolver.h"

namespace Zorv::Benchmarks {

namespace {

using Visuals::Threshold;
using Visuals::ThresholdKind;

Visuals::VisualKind makeScale() {
  return Visuals::ColourScale{
      {{{.kind = ThresholdKind::Min}, {0xF8, 0x69, 0x6B}},
       {{.kind = ThresholdKind::Percentile, .operand = 50.0}, {0xFF, 0xEB, 0x84}},
       {{.kind = ThresholdKind::Max}, {0x63, 0xBE, 0x7B}}}};
}

Visuals::VisualKind makeBar() {
  Visuals::DataBar bar;
  bar.minimum.kind = ThresholdKind::AutoMin;
  bar.maximum.kind = ThresholdKind::AutoMax;
  bar.axis = Visuals::BarAxis::Automatic;
  return bar;
}

Visuals::VisualKind makeIcons() {
  Visuals::IconSet set{.name = Visuals::IconSetName::Rating5};
  for (double const percent : {0, 20, 40, 60, 80}) {
    set.steps.push_back({.kind = ThresholdKind::Percent, .operand = percent});
  }
  return set;
}

/// A column with one visual format.
class VisualColumn {
public:
  VisualColumn(std::size_t cellCount, Visuals::VisualKind kind) : _table(cellCount) {
    _table.makeCalculator();
    auto format = std::make_unique<Visuals::VisualFormat>();
    format->ranges = {_table.getTable().toRangeByID(_table.getColumn())};
    format->kind = std::move(kind);
    _formats.push_back(std::move(format));
    _resolver.emplace(_table.getCalculator().prepare(_table.getStyles(), _table.getTable()));
  }

  [[nodiscard]] Visuals::VisualResolver makeResolver() const {
    return Visuals::VisualResolver(
        {.table = _table.getTable(),
         .formats = _formats,
         .provider = _values,
         .conditionalFormats = _table.getCalculator().getConditionalFormatRefs(_table.getTable()),
         .resolver = *_resolver,
         .styles = _table.getStyles()});
  }

  /// Resolves the column; gives how many cells have a visual.
  std::size_t draw(Visuals::VisualResolver const& resolver, unsigned threadCount = 1) const {
    std::size_t drawn = 0;
    resolver.visit(
        {.range = _table.getColumn(), .threadCount = threadCount},
        [&](Visuals::VisualCell const& cell) { drawn += cell.visuals.isEmpty() ? 0 : 1; });
    return drawn;
  }

private:
  BenchTable _table;
  Visuals::VisualFormats _formats;
  TestSupport::PlainValueContextProvider _values{_table.getTable()};
  std::optional<ConditionalFormatters::TableResolver> _resolver;
};

/// With `again`, the thresholds are known from an earlier pass.
void measureVisual(benchmark::State& state, Visuals::VisualKind kind, bool again) {
  VisualColumn const column(static_cast<std::size_t>(state.range(0)), std::move(kind));
  Visuals::VisualResolver const known = column.makeResolver();
  benchmark::DoNotOptimize(column.draw(known));
  for (auto _ : state) {
    benchmark::DoNotOptimize(again ? column.draw(known) : column.draw(column.makeResolver()));
  }
}

double measureDrawing(VisualColumn const& column, unsigned threadCount) {
  auto const start = std::chrono::steady_clock::now();
  benchmark::DoNotOptimize(column.draw(column.makeResolver(), threadCount));
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// One thread and two by turns, of which the fastest pass counts.
void measureVisualTurns(benchmark::State& state, Visuals::VisualKind kind) {
  VisualColumn const column(static_cast<std::size_t>(state.range(0)), std::move(kind));
  double withOne = std::numeric_limits<double>::infinity();
  double withTwo = withOne;
  for (auto _ : state) {
    withOne = std::min(withOne, measureDrawing(column, 1));
    withTwo = std::min(withTwo, measureDrawing(column, 2));
  }
  state.counters["withOne"] = withOne;
  state.counters["withTwo"] = withTwo;
}

}  // namespace

void registerVisuals() {
  struct Measured {
    char const* name;
    Visuals::VisualKind (*make)();
  };
  for (auto const& [kind, make] :
       {Measured{"scale", makeScale}, Measured{"bar", makeBar}, Measured{"icons", makeIcons}}) {
    for (bool const again : {false, true}) {
      std::string const name = std::string("visual/") + kind + (again ? "Again" : "");
      benchmark::RegisterBenchmark(
          name.c_str(),
          [make = make, again](benchmark::State& state) { measureVisual(state, make(), again); })
          ->Arg(100'000)
          ->Arg(1'000'000)
          ->Unit(benchmark::kMillisecond);
    }
    std::string const name = std::string("threads/visual/") + kind;
    benchmark::RegisterBenchmark(
        name.c_str(), [make = make](benchmark::State& state) { measureVisualTurns(state, make()); })
        ->Arg(1'000'000)
        ->Iterations(4)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
  }
}

}  // namespace Zorv::Benchmarks
