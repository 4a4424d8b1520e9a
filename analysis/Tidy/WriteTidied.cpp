#include "analysis/Tidy/WriteTidied.h"

#include <algorithm>
#include <optional>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "OfficeUtils/PinnedMoment.h"
#include "analysis/Diff/CompareCells.h"
#include "analysis/Tidy/TargetFile.h"
#include "analysis/Tidy/TidyError.h"
#include "workbook/Package/CopyPackage.h"
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

std::size_t countRules(Document const& document, std::size_t sheet) {
  return std::ranges::equal_range(document.getRules(), sheet, {}, &Workbook::Rule::sheet).size();
}

void checkRuleCounts(Document const& tidied, TidyPlan const& plan) {
  for (SheetPlan const& sheet : plan.sheets) {
    if (countRules(tidied, sheet.sheet) != sheet.countRulesAfter()) {
      throw TidyError(
          "the new file would have other rules than planned, so that nothing is written; this is a "
          "fault of the program");
    }
  }
}

void checkCells(Document const& document, Document const& tidied, Workbook::LoadOptions const& load,
                unsigned threadCount) {
  auto const moment = OfficeUtils::PinnedMoment::readMoment();
  CompareOptions const options{.localeName = load.localeName,
                               .timeZone = load.timeZone,
                               .threadCount = threadCount,
                               .budget = load.budget};
  for (std::size_t sheet = 0; sheet < document.getSheets().size(); ++sheet) {
    compareSheets(
        {&document, moment}, sheet, {&tidied, moment}, sheet, options,
        [&](CellDifference const& difference) { refuseDifference(document, difference); });
  }
}

}  // namespace

void writeTidied(std::filesystem::path const& file, Document const& document, TidyPlan const& plan,
                 Workbook::LoadOptions const& load, WriteOptions const& options) {
  TargetFile target(options.target, file, options.mayReplace);
  Workbook::copyPackage(file, target.getTemporaryPath(), plan.contents);
  if (!plan.changesNothing()) {
    if (!Workbook::hasSameOtherParts(file, target.getTemporaryPath(), plan.contents)) {
      throw TidyError("the other parts of the file could not be kept, so that nothing is written");
    }
    Document const tidied = Workbook::loadWorkbook(target.getTemporaryPath(), load);
    checkRuleCounts(tidied, plan);
    checkCells(document, tidied, load, options.threadCount);
  }
  target.commit();
}

}  // namespace Zorv::Analysis
