#pragma once

#include <iosfwd>

#include "tool/Input/Errors.h"
#include "tool/Input/Selection.h"
#include "tool/Output/ProgressBar.h"
#include "tool/Output/Report.h"

/// Commands of the tool. Each prints its result to `out`, and its messages by the report.
namespace Zorv::Tool {

/// Prints every cell with a conditional style, the style, and the deciding rules. The progress bar
/// follows the rows of each sheet. Returns BadFile if a condition could not be evaluated; the cell
/// is then left out.
[[nodiscard]] ExitStatus runResolve(Selection const& selection, std::ostream& out, Report& report,
                                    ProgressBar& progress);

/// Prints the rules of each sheet by priority, with those that are not resolved.
[[nodiscard]] ExitStatus runRules(Selection const& selection, std::ostream& out);

/// Prints for each resolved rule and each position of its ranges whether the condition holds by
/// itself, as tab-separated values under a line of headings.
[[nodiscard]] ExitStatus runVerdicts(Selection const& selection, std::ostream& out, Report& report);

/// Above this number of positions, only existing cells are visited.
inline constexpr unsigned long mostPositions = 5'000'000;

}  // namespace Zorv::Tool
