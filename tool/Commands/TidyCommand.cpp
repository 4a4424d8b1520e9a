#include <exception>

#include <fmt/format.h>

#include "analysis/Shared/TargetFile.h"
#include "analysis/Tidy/PlanTidy.h"
#include "analysis/Tidy/TidyError.h"
#include "analysis/Tidy/WriteTidied.h"
#include "tool/Commands/Commands.h"
#include "tool/Commands/RunFiles.h"
#include "tool/Input/Errors.h"
#include "tool/Output/TidyOutput.h"

namespace Zorv::Tool {

namespace {

/// Writes the new file, unless the options ask for the plan alone.
TidyResult carryOut(CommandContext const& context, std::string const& file,
                    Analysis::TidyPlan const& plan, Workbook::LoadOptions const& load) {
  auto const& options = context.selection.getOptions();
  if (options.tidy.dryRun) {
    return {};
  }
  auto const count = Analysis::writeTidied(file, context.selection.getDocument(), plan, load,
                                           {.target = options.tidy.target,
                                            .mayReplace = options.tidy.mayReplace,
                                            .threadCount = options.threadCount});
  return {.isWritten = true, .comparedCells = count};
}

[[noreturn]] void failTidy(CommandContext const& context, std::exception const& error) {
  context.report.setIncomplete();
  throw ContentError(fmt::format("{}: {}", context.selection.getFile(), error.what()));
}

}  // namespace

void runTidy(CommandContext const& context) {
  auto const& selection = context.selection;
  auto const& options = selection.getOptions();
  auto const& file = options.files.front();
  try {
    auto const load = makeLoadOptions(file, options, context.budget);
    auto const plan = Analysis::planTidy(file, selection.getDocument(), load);
    if (plan.breaksSignature) {
      context.report.addFinding(
          "the workbook is signed, and its digital signature does not hold for the tidied file; "
          "sign that anew");
    }
    auto const result = carryOut(context, file, plan, load);
    if (options.format == OutputFormat::Json) {
      printTidyJson(selection, plan, result, context.out);
    } else {
      printTidyTable(selection, plan, result, context.terminal, context.out);
    }
  } catch (Analysis::TidyError const& error) {
    failTidy(context, error);
  } catch (Analysis::TargetError const& error) {
    failTidy(context, error);
  } catch (...) {
    context.report.setIncomplete();
    throw;
  }
}

}  // namespace Zorv::Tool
