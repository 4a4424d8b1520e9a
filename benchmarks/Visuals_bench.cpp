// Colour scales, data bars and icon sets: one over every cell of a column, on one thread.

#include <cstddef>
#include <memory>
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

/// Resolves the column; gives how many cells have a visual.
std::size_t drawColumn(BenchTable const& table, Visuals::VisualResolver const& resolver) {
  std::size_t drawn = 0;
  resolver.visit({.range = table.getColumn()},
                 [&](Visuals::VisualCell const& cell) { drawn += cell.visuals.isEmpty() ? 0 : 1; });
  return drawn;
}

/// With `again`, the thresholds are known from an earlier pass.
void measureVisual(benchmark::State& state, Visuals::VisualKind kind, bool again) {
  BenchTable table(static_cast<std::size_t>(state.range(0)));
  table.makeCalculator();
  auto format = std::make_unique<Visuals::VisualFormat>();
  format->ranges = {table.getTable().toRangeByID(table.getColumn())};
  format->kind = std::move(kind);
  Visuals::VisualFormats formats;
  formats.push_back(std::move(format));
  TestSupport::PlainValueContextProvider const values(table.getTable());
  auto const& calculator = table.getCalculator();
  auto const resolver = calculator.prepare(table.getStyles(), table.getTable());
  Visuals::VisualSources const sources{
      .table = table.getTable(),
      .formats = formats,
      .provider = values,
      .conditionalFormats = calculator.getConditionalFormatRefs(table.getTable()),
      .resolver = resolver,
      .styles = table.getStyles()};
  Visuals::VisualResolver const known(sources);
  benchmark::DoNotOptimize(drawColumn(table, known));
  for (auto _ : state) {
    benchmark::DoNotOptimize(again ? drawColumn(table, known)
                                   : drawColumn(table, Visuals::VisualResolver(sources)));
  }
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
  }
}

}  // namespace Zorv::Benchmarks
