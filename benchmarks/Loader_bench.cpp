// Loading: a workbook of a million numbers, its time and what stays in memory for each cell.

#include <cstddef>
#include <fstream>
#include <string>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include "Benchmarks.h"
#include "workbook/LoadWorkbook.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Benchmarks {

namespace {

constexpr std::size_t columnCount = 10;

std::string makeRows(std::size_t cellCount) {
  std::string rows;
  for (std::size_t row = 1; row <= cellCount / columnCount; ++row) {
    rows += "<row r=\"" + std::to_string(row) + "\">";
    for (std::size_t column = 0; column < columnCount; ++column) {
      rows += "<c r=\"";
      rows += static_cast<char>('A' + column);
      rows += std::to_string(row) + "\"><v>" + std::to_string(row * 7 + column) + ".25</v></c>";
    }
    rows += "</row>";
  }
  return rows;
}

double readResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  double total = 0;
  double resident = 0;
  statm >> total >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

void measureLoading(benchmark::State& state) {
  auto const cellCount = static_cast<std::size_t>(state.range(0));
  TestSupport::TemporaryFile const file(
      TestSupport::WorkbookBuilder().setSheet(makeRows(cellCount)).makeBytes());
  double residentBytes = 0;
  for (auto _ : state) {
    malloc_trim(0);  // what was freed before is not to be taken for what is used again
    double const before = readResidentBytes();
    auto const document = Workbook::loadWorkbook(file.getPath());
    residentBytes = readResidentBytes() - before;
    benchmark::DoNotOptimize(document.getSheets().front().table->getCellCount());
  }
  state.counters["residentBytesPerCell"] = residentBytes / static_cast<double>(cellCount);
}

}  // namespace

void registerLoader() {
  benchmark::RegisterBenchmark("load/numbers", measureLoading)
      ->Arg(1'000'000)
      ->Iterations(1)
      ->Unit(benchmark::kMillisecond);
}

}  // namespace Zorv::Benchmarks
