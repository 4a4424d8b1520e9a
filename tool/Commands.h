#pragma once

#include <iosfwd>

#include "tool/Errors.h"
#include "tool/ProgressBar.h"
#include "tool/Report.h"
#include "tool/Selection.h"

/// The commands of the tool. Each prints its result, and tells the report what else there is to
/// say.
namespace Zorv::Tool {

/// Every cell that conditional formats style, its style, and the rules that decide.
/// The progress bar shows how far the resolving of each sheet is.
/// BadFile where a condition could not be evaluated: the cell is then missing.
[[nodiscard]] ExitStatus runResolve(Selection const& selection, std::ostream& out, Report& report,
                                    ProgressBar& progress);

/// The rules of each sheet by priority, those that are not resolved included.
[[nodiscard]] ExitStatus runRules(Selection const& selection, std::ostream& out);

/// For each rule that is resolved and each position of its ranges, whether the condition holds by
/// itself: tab-separated, with a line of headings.
[[nodiscard]] ExitStatus runVerdicts(Selection const& selection, std::ostream& out, Report& report);

/// Positions without a cell are looked at as long as there are no more than this.
inline constexpr unsigned long mostPositions = 5'000'000;

}  // namespace Zorv::Tool
