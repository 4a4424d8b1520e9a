// Writers of pictures: a page, pictures and a terminal, of cells with fills, lines and numbers.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>

#include "Benchmarks.h"
#include "render/Drawing.h"
#include "render/Html/Page.h"
#include "render/Terminal/DrawOnTerminal.h"

namespace Zorv::Benchmarks {

namespace {

constexpr std::uint32_t writtenColumns = 10;
constexpr std::uint32_t writtenLooks = 20;

void addLooks(Render::SheetPicture& sheet) {
  sheet.looks.emplace_back();
  for (std::uint8_t number = 0; number < writtenLooks; ++number) {
    auto& look = sheet.looks.emplace_back();
    look.font.name = "Calibri";
    look.font.bold = number % 2 == 1;
    look.fill.pattern = DOM::FillPattern::Solid;
    look.fill.colour = {static_cast<std::uint8_t>(120 + 6 * number), 192, 192};
  }
  sheet.edges.resize(2);
  auto const line = DOM::BorderLine{.style = DOM::LineStyle::Thin};
  sheet.edges.back().left = sheet.edges.back().right = line;
  sheet.edges.back().top = sheet.edges.back().bottom = line;
}

void addLines(Render::SheetPicture& sheet, std::uint32_t rowCount) {
  constexpr double rowHeight = 20;
  constexpr double columnWidth = 64;
  for (std::uint32_t row = 0; row < rowCount; ++row) {
    sheet.rows.push_back({.index = row, .start = row * rowHeight, .size = rowHeight});
  }
  for (std::uint32_t column = 0; column < writtenColumns; ++column) {
    sheet.columns.push_back({.index = column, .start = column * columnWidth, .size = columnWidth});
  }
  sheet.width = writtenColumns * columnWidth;
  sheet.height = rowCount * rowHeight;
  sheet.range = {0, 0, rowCount, writtenColumns};
}

/// The same for every run of the same size.
Render::Picture makeWrittenPicture(std::size_t cellCount) {
  Render::Picture picture;
  picture.name = "bench.xlsx";
  auto& sheet = picture.sheets.emplace_back();
  sheet.name = "Data";
  addLooks(sheet);
  addLines(sheet, static_cast<std::uint32_t>(cellCount / writtenColumns));
  sheet.decisions.emplace_back();
  for (std::uint32_t row = 0; row < sheet.rows.size(); ++row) {
    for (std::uint32_t column = 0; column < writtenColumns; ++column) {
      auto& cell = sheet.cells.emplace_back();
      cell.row = row;
      cell.column = column;
      cell.look = (row + column) % writtenLooks + 1;
      cell.edges = 1;
      cell.content = Render::CellContent::Number;
      cell.horizontal = DOM::HorizontalAlignment::Right;
      cell.text = std::to_string(row * 7 + column) + ".25";
    }
  }
  return picture;
}

using Writer = std::size_t (*)(Render::Picture const& picture);

std::size_t writeAsPage(Render::Picture const& picture) {
  std::size_t count = 0;
  Render::writePage(picture, {}, nullptr, [&](std::string_view text) { count += text.size(); });
  return count;
}

template <Render::DrawingFormat format>
std::size_t writeAsDrawing(Render::Picture const& picture) {
  std::size_t count = 0;
  Render::draw(picture, format, {}, [&](std::string_view bytes) { count += bytes.size(); });
  return count;
}

std::size_t writeOnTerminal(Render::Picture const& picture) {
  std::size_t count = 0;
  Render::drawOnTerminal(picture.sheets.front(), {.colours = Render::ColourDepth::Direct},
                         [&](std::string_view line) { count += line.size(); });
  return count;
}

void measureWriter(benchmark::State& state, Writer write) {
  auto const picture = makeWrittenPicture(static_cast<std::size_t>(state.range(0)));
  std::size_t bytes = 0;
  for (auto _ : state) {
    bytes = write(picture);
    benchmark::DoNotOptimize(bytes);
  }
  state.counters["bytes"] = static_cast<double>(bytes);
}

}  // namespace

void registerWriters() {
  struct Measured {
    char const* name;
    Writer write;
  };
  for (auto const& [name, write] : {
           Measured{"render/html", writeAsPage},
           Measured{"render/png", writeAsDrawing<Render::DrawingFormat::Png>},
           Measured{"render/svg", writeAsDrawing<Render::DrawingFormat::Svg>},
           Measured{"render/pdf", writeAsDrawing<Render::DrawingFormat::Pdf>},
           Measured{"render/terminal", writeOnTerminal},
       }) {
    benchmark::RegisterBenchmark(
        name, [write = write](benchmark::State& state) { measureWriter(state, write); })
        ->Arg(100'000)
        ->Unit(benchmark::kMillisecond);
  }
}

}  // namespace Zorv::Benchmarks
