#pragma once

#include "Utils/WorkBudget.h"
#include "tool/Input/Errors.h"
#include "tool/Input/Options.h"
#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Terminal.h"

namespace Zorv::Tool {

/// Prints the rules and cells that differ between two workbooks, or in one between two moments.
/// Returns ExitStatus::Success if none does, ExitStatus::Different otherwise. Throws what loading
/// and the budget throw, after what is known was printed.
[[nodiscard]] ExitStatus runDiff(Options const& options, Terminal const& terminal,
                                 OutputBuffer& out, WorkBudget& budget);

}  // namespace Zorv::Tool
