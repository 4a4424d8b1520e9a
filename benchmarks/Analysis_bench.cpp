// Questions about a loaded workbook: why a cell looks as it does, what is wrong with its rules, how
// few rules it needs, and what has changed in it.

#include <cstddef>
#include <string>

#include <benchmark/benchmark.h>

#include "Benchmarks.h"
#include "OfficeUtils/Clock.h"
#include "analysis/Check/Check.h"
#include "analysis/Diff/CompareCells.h"
#include "analysis/Diff/CompareRules.h"
#include "analysis/Explain/Explainer.h"
#include "analysis/Tidy/PlanTidy.h"
#include "workbook/LoadWorkbook.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Benchmarks {

namespace {

/// Pieces into which copying has divided each of two rules.
constexpr std::size_t pieceCount = 200;

std::string makeCells(std::size_t cellCount) {
  std::string rows;
  for (std::size_t row = 1; row <= cellCount; ++row) {
    std::string const number = std::to_string(row);
    rows += "<row r=\"" + number + "\"><c r=\"A" + number + "\"><v>" +
            std::to_string(row * 7919 % cellCount) + "</v></c></row>";
  }
  return rows;
}

/// Two rules in pieces, a rule of ranks, and a colour scale.
std::string makeRules(std::size_t cellCount) {
  std::string rules;
  std::size_t const step = cellCount / pieceCount;
  for (std::size_t piece = 0; piece < pieceCount; ++piece) {
    std::string const first = "A" + std::to_string(piece * step + 1);
    rules +=
        "<conditionalFormatting sqref=\"" + first + ":A" + std::to_string((piece + 1) * step) +
        "\"><cfRule type=\"cellIs\" operator=\"lessThan\" " + "priority=\"" +
        std::to_string(piece * 2 + 1) +
        "\" dxfId=\"0\"><formula>100</formula></cfRule><cfRule type=\"expression\" priority=\"" +
        std::to_string(piece * 2 + 2) + "\" dxfId=\"1\"><formula>AND(" + first + "&gt;500,MOD(" +
        first + ",7)=0)</formula></cfRule></conditionalFormatting>";
  }
  return rules + "<conditionalFormatting sqref=\"A1:A" + std::to_string(cellCount) +
         "\"><cfRule type=\"top10\" priority=\"1000\" dxfId=\"1\" rank=\"10\"/><cfRule "
         "type=\"colorScale\" priority=\"1001\"><colorScale><cfvo type=\"min\"/><cfvo "
         "type=\"max\"/>"
         "<color rgb=\"FFFFFFFF\"/><color rgb=\"FF63BE7B\"/></colorScale></cfRule>"
         "</conditionalFormatting>";
}

/// A workbook in a file and in memory.
struct AnalysedBook {
  explicit AnalysedBook(std::size_t cellCount)
      : file(TestSupport::WorkbookBuilder()
                 .setStyles("<dxfs><dxf><font><b/></font></dxf><dxf><font><i/></font></dxf></dxfs>")
                 .setSheet(makeCells(cellCount), makeRules(cellCount))
                 .makeBytes()),
        document(Workbook::loadWorkbook(file.getPath())) {}

  TestSupport::TemporaryFile file;
  Workbook::Document document;
};

void explainCell(AnalysedBook const& book) {
  Analysis::Explainer explainer(book.document, "en-US", DOM::TimeZone());
  benchmark::DoNotOptimize(explainer.explain(0, {RowIndex(7), ColumnIndex(0)}).rules.size());
}

void explainThousandCells(AnalysedBook const& book) {
  constexpr unsigned long cells = 1'000;
  Analysis::Explainer explainer(book.document, "en-US", DOM::TimeZone());
  for (unsigned long row = 0; row < cells; ++row) {
    benchmark::DoNotOptimize(explainer.explain(0, {RowIndex(row), ColumnIndex(0)}).rules.size());
  }
}

void checkRules(AnalysedBook const& book) {
  benchmark::DoNotOptimize(Analysis::check(book.document).size());
}

void planFewerRules(AnalysedBook const& book) {
  benchmark::DoNotOptimize(
      Analysis::planTidy(book.file.getPath(), book.document, {}).sheets.size());
}

void compareWithItself(AnalysedBook const& book) {
  Analysis::DocumentVersion const version{&book.document, OfficeUtils::Clock::readCurrent()};
  benchmark::DoNotOptimize(Analysis::compareRules(book.document, 0, book.document, 0).size());
  benchmark::DoNotOptimize(
      Analysis::compareSheets(version, 0, version, 0, {}, [](Analysis::CellDifference const&) {}));
}

void measureAnalysis(benchmark::State& state, void (*ask)(AnalysedBook const&)) {
  AnalysedBook const book(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    ask(book);
  }
}

}  // namespace

void registerAnalysis() {
  struct Question {
    char const* name;
    void (*ask)(AnalysedBook const&);
  };
  for (auto const& question :
       {Question{"analysis/explain", explainCell},
        Question{"analysis/explain_1000", explainThousandCells},
        Question{"analysis/check", checkRules}, Question{"analysis/tidy", planFewerRules},
        Question{"analysis/diff", compareWithItself}}) {
    benchmark::RegisterBenchmark(
        question.name,
        [ask = question.ask](benchmark::State& state) { measureAnalysis(state, ask); })
        ->Arg(10'000)
        ->Arg(100'000)
        ->Unit(benchmark::kMillisecond);
  }
}

}  // namespace Zorv::Benchmarks
