#pragma once

#include <cstdint>

#include "analysis/Tidy/PlanTidy.h"
#include "tool/Input/Selection.h"
#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Terminal.h"

namespace Zorv::Tool {

/// Result of carrying out a plan.
struct TidyResult {
  bool isWritten = false;
  std::uint64_t comparedCells = 0;
};

/// Prints what becomes of each rule, if nothing is written yet, and the number of rules of each
/// sheet before and after.
void printTidyTable(Selection const& selection, Analysis::TidyPlan const& plan,
                    TidyResult const& result, Terminal const& terminal, OutputBuffer& out);

/// Prints all of it as JSON.
void printTidyJson(Selection const& selection, Analysis::TidyPlan const& plan,
                   TidyResult const& result, OutputBuffer& out);

}  // namespace Zorv::Tool
