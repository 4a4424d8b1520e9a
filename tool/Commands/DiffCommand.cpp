#include "tool/Commands/DiffCommand.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <utility>

#include "OfficeUtils/Clock.h"
#include "analysis/Diff/CompareCells.h"
#include "analysis/Diff/CompareRules.h"
#include "analysis/Diff/MatchSheets.h"
#include "tool/Commands/RunFiles.h"
#include "tool/Input/Selection.h"
#include "tool/Output/DiffOutput.h"
#include "tool/Output/Report.h"

namespace Zorv::Tool {

namespace {

/// The file and the moment of the first or the second version; one of either serves for both.
struct VersionSource {
  VersionSource(Options const& options, std::size_t index)
      : file(options.files[std::min(index, options.files.size() - 1)]),
        moment(options.moments[std::min(index, options.moments.size() - 1)]) {}

  std::string file;
  OfficeUtils::Clock::TimePoint moment;
};

Workbook::Document loadVersion(VersionSource const& source, Options const& options,
                               WorkBudget& budget) {
  OfficeUtils::ScopedClock const clock(source.moment);
  return loadFile(source.file, options, budget);
}

/// Comparison of two versions, which is printed while it is made.
class Comparison {
public:
  Comparison(Options const& options, VersionPair const& versions, DiffOutput& output,
             WorkBudget& budget)
      : _options(options),
        _versions(versions),
        _output(output),
        _budget(budget),
        _sheets(Analysis::matchSheets(versions.first.getDocument(), versions.first.getSheets(),
                                      versions.second.getDocument(), versions.second.getSheets())) {
  }

  void run(std::pair<OfficeUtils::Clock::TimePoint, OfficeUtils::Clock::TimePoint> moments) {
    auto const& first = _versions.first.getDocument();
    auto const& second = _versions.second.getDocument();
    for (std::size_t const sheet : _sheets.onlyInFirst) {
      _output.addSheet(first.getSheets()[sheet].name, true);
    }
    for (std::size_t const sheet : _sheets.onlyInSecond) {
      _output.addSheet(second.getSheets()[sheet].name, false);
    }
    for (auto const& [sheet, partner] : _sheets.pairs) {
      for (auto const& difference : Analysis::compareRules(first, sheet, second, partner)) {
        if (isSelected(difference)) {
          _output.addRule(difference);
        }
      }
    }
    for (auto const& [sheet, partner] : _sheets.pairs) {
      Analysis::compareSheets({&first, moments.first}, sheet, {&second, moments.second}, partner,
                              {.localeName = _options.localeName,
                               .timeZone = _options.timeZone,
                               .threadCount = _options.threadCount,
                               .budget = &_budget,
                               .ranges = _versions.first.getRanges(sheet)},
                              [&](Analysis::CellDifference const& cell) { _output.addCell(cell); });
    }
  }

private:
  [[nodiscard]] bool isSelected(Analysis::RuleDifference const& difference) const noexcept {
    return (difference.first != nullptr && _versions.first.contains(*difference.first)) ||
           (difference.second != nullptr && _versions.second.contains(*difference.second));
  }

  Options const& _options;
  VersionPair const& _versions;
  DiffOutput& _output;
  WorkBudget& _budget;
  Analysis::SheetMatch _sheets;
};

std::unique_ptr<DiffOutput> makeOutput(VersionPair const& versions, MomentPair const& moments,
                                       Terminal const& terminal, OutputBuffer& out) {
  switch (versions.first.getOptions().format) {
    case OutputFormat::Json:
      return makeDiffJson(versions, moments, out);
    case OutputFormat::Csv:
    case OutputFormat::Tsv:
      return makeDiffLines(versions, out);
    default:
      return makeDiffTable(versions, terminal, out);
  }
}

}  // namespace

ExitStatus runDiff(Options const& options, Terminal const& terminal, OutputBuffer& out,
                   WorkBudget& budget) {
  VersionSource const from(options, 0);
  VersionSource const to(options, 1);
  auto const first = loadVersion(from, options, budget);
  auto const second = loadVersion(to, options, budget);
  VersionPair const versions{Selection(first, options, nameOfFile(from.file)),
                             Selection(second, options, nameOfFile(to.file))};
  Report(std::cerr, versions.first).sayFindings();
  if (options.files.size() > 1) {
    Report(std::cerr, versions.second).sayFindings();
  }
  auto const output = makeOutput(versions, {from.moment, to.moment}, terminal, out);
  try {
    Comparison(options, versions, *output, budget).run({from.moment, to.moment});
  } catch (...) {
    output->finish(false);
    out.flush();
    throw;
  }
  output->finish(true);
  out.flush();
  return output->hasDifferences() ? ExitStatus::Different : ExitStatus::Success;
}

}  // namespace Zorv::Tool
