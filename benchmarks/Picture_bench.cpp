// Pictures: cells with styles of their own, fills, lines and number formats, without conditional
// formats, whose passes have rows of their own.

#include <cstddef>
#include <string>

#include <benchmark/benchmark.h>

#include "Benchmarks.h"
#include "render/BuildPicture.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Benchmarks {

namespace {

constexpr std::size_t columnsOfPicture = 10;
constexpr std::size_t stylesOfPicture = 20;

std::string makePictureStyles() {
  std::string fills = "<fills><fill/><fill/>";
  std::string formats = "<cellXfs><xf/>";
  for (std::size_t i = 0; i < stylesOfPicture; ++i) {
    std::string const red = std::to_string(10 + i);
    fills += "<fill><patternFill patternType='solid'><fgColor rgb='FF" + red +
             "C0C0'/></patternFill></fill>";
    formats += "<xf borderId='1' fillId='" + std::to_string(i + 2) + "' numFmtId='" +
               std::to_string(i % 5) + "'/>";
  }
  return fills +
         "</fills><borders><border/><border><left style='thin'/><right style='thin'/>"
         "<top style='thin'/><bottom style='thin'/></border></borders>" +
         formats + "</cellXfs>";
}

std::string makePictureRows(std::size_t cellCount) {
  std::string rows;
  for (std::size_t row = 1; row <= cellCount / columnsOfPicture; ++row) {
    rows += "<row r=\"" + std::to_string(row) + "\">";
    for (std::size_t column = 0; column < columnsOfPicture; ++column) {
      rows += "<c s=\"" + std::to_string((row + column) % stylesOfPicture + 1) + "\"><v>" +
              std::to_string(row * 7 + column) + ".25</v></c>";
    }
    rows += "</row>";
  }
  return rows;
}

void measurePicture(benchmark::State& state) {
  auto const cellCount = static_cast<std::size_t>(state.range(0));
  auto const document = TestSupport::WorkbookBuilder()
                            .setStyles(makePictureStyles())
                            .setSheet(makePictureRows(cellCount))
                            .load();
  Render::PictureOptions options;
  options.sheets.push_back({.sheet = 0, .range = {}});
  for (auto _ : state) {
    benchmark::DoNotOptimize(Render::buildPicture(document, options).sheets.front().cells.size());
  }
}

}  // namespace

void registerPicture() {
  benchmark::RegisterBenchmark("render/picture", measurePicture)
      ->Arg(100'000)
      ->Unit(benchmark::kMillisecond);
}

}  // namespace Zorv::Benchmarks
