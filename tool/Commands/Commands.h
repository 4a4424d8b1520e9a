#pragma once

#include "Utils/WorkBudget.h"
#include "tool/Input/Selection.h"
#include "tool/Output/ProgressBar.h"
#include "tool/Output/Report.h"
#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Terminal.h"

/// Commands of the tool. Each prints its result to `out`, and its messages by the report. If the
/// budget stops the work, or it fails, what is known so far is printed, the report is set
/// incomplete, and the exception goes on.
namespace Zorv::Tool {

/// Tools of a command. Borrows everything.
struct CommandContext {
  Selection const& selection;
  Terminal const& terminal;
  OutputBuffer& out;
  Report& report;
  WorkBudget& budget;
  bool isFirstFile;  ///< of those that are printed
};

/// Prints every cell for which a rule decides, its style, and the deciding rules. The progress bar
/// follows the rows of each sheet. A cell for which a condition could not be evaluated is left out,
/// and the report counts it.
void runResolve(CommandContext const& context, ProgressBar& progress);

/// Prints why each selected cell looks as it does: what became of each rule on it, and who sets
/// which property. A condition that cannot be evaluated is part of the answer, and the report
/// counts it.
void runExplain(CommandContext const& context);

/// Prints the rules of each sheet by priority, with those that are not resolved. The report counts
/// rules whose formulas cannot be evaluated at their first cell.
void runRules(CommandContext const& context);

/// Prints for each resolved condition and each position of its ranges whether it holds by itself,
/// as tab-separated values under a line of headings.
void runVerdicts(CommandContext const& context);

/// Prints what an auditor of the rules should look at.
void runCheck(CommandContext const& context);

/// Puts the rules of the file in order, writes the file of the options unless they ask for the plan
/// alone, and prints what becomes of the rules.
void runTidy(CommandContext const& context);

/// Writes the selected sheets as a page or a picture to the file of the options, and tells how
/// large it is.
void runRender(CommandContext const& context);

/// Prints the selected sheets as they look, with characters.
void runShow(CommandContext const& context);

}  // namespace Zorv::Tool
