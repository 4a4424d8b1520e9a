#include "analysis/Tidy/WriteTidied.h"

#include <algorithm>
#include <optional>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "OfficeUtils/PinnedMoment.h"
#include "analysis/Diff/CompareCells.h"
#include "analysis/Shared/TargetFile.h"
#include "analysis/Tidy/TidyError.h"
#include "workbook/Package/CopyPackage.h"
#include "workbook/Package/PartError.h"
#include "workbook/Quote.h"

namespace Zorv::Analysis {

namespace {

using Workbook::Document;

/// Thrown at the first difference, since one is enough.
[[noreturn]] void refuseDifference(Document const& document, CellDifference const& difference) {
  throw TidyError(fmt::format(
      "{} on the sheet \"{}\" would look different afterwards, so that nothing is written; this is "
      "a fault of the program",
      DOM::A1Notation::toAddress(difference.cell),
      Workbook::quote(document.getSheets()[difference.firstSheet].name)));
}

void checkRuleCounts(Document const& tidied, TidyPlan const& plan) {
  for (SheetPlan const& sheet : plan.sheets) {
    if (tidied.getRulesOfSheet(sheet.sheet).size() != sheet.countRulesAfter()) {
      throw TidyError(
          "the new file would have other rules than planned, so that nothing is written; this is a "
          "fault of the program");
    }
  }
}

/// Returns the number of positions.
std::uint64_t checkCells(Document const& document, Document const& tidied,
                         Workbook::LoadOptions const& load, unsigned threadCount) {
  auto const moment = OfficeUtils::PinnedMoment::readMoment();
  CompareOptions const options{.localeName = load.localeName,
                               .timeZone = load.timeZone,
                               .threadCount = threadCount,
                               .budget = load.budget};
  std::uint64_t count = 0;
  for (std::size_t sheet = 0; sheet < document.getSheets().size(); ++sheet) {
    count += compareSheets(
        {&document, moment}, sheet, {&tidied, moment}, sheet, options,
        [&](CellDifference const& difference) { refuseDifference(document, difference); });
  }
  return count;
}

/// Checks the written file; returns the number of positions that were compared.
std::uint64_t prove(std::filesystem::path const& file, Document const& document,
                    std::filesystem::path const& written, TidyPlan const& plan,
                    Workbook::LoadOptions const& load, unsigned threadCount) {
  if (!Workbook::hasSameOtherParts(file, written, plan.contents)) {
    throw TidyError("the other parts of the file could not be kept, so that nothing is written");
  }
  Document const tidied = Workbook::loadWorkbook(written, load);
  checkRuleCounts(tidied, plan);
  return checkCells(document, tidied, load, threadCount);
}

}  // namespace

std::uint64_t writeTidied(std::filesystem::path const& file, Document const& document,
                          TidyPlan const& plan, Workbook::LoadOptions const& load,
                          WriteOptions const& options) {
  TargetFile target(options.target, file, options.mayReplace);
  std::uint64_t count = 0;
  try {
    Workbook::copyPackage(file, target.getTemporaryPath(), plan.contents);
    if (!plan.changesNothing()) {
      count = prove(file, document, target.getTemporaryPath(), plan, load, options.threadCount);
    }
  } catch (Workbook::PartError const& error) {
    throw TidyError(fmt::format("{}: {}", options.target.string(), error.getProblem()));
  } catch (Workbook::LoadError const& error) {
    throw TidyError(fmt::format("the new file could not be read, so that nothing is written: {}",
                                error.getProblem()));
  }
  target.commit();
  return count;
}

}  // namespace Zorv::Analysis
