#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "analysis/Check/CheckFinding.h"
#include "tool/Input/Selection.h"
#include "tool/Output/Report.h"
#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Terminal.h"

/// The findings of `cndfrmt check` in its formats. Every text of the workbook is made printable,
/// and cut.
namespace Zorv::Tool {

using CheckFindings = std::span<Analysis::CheckFinding const>;

[[nodiscard]] std::size_t countFindings(CheckFindings findings, Analysis::Severity severity);

/// The sheet and ranges of a finding: `Sales!B2:B9 D2 and 5 more`; empty for the workbook as a
/// whole.
[[nodiscard]] std::string describePlace(Selection const& selection,
                                        Analysis::CheckFinding const& finding);

/// Prints one line for each finding, and what to do about each code that occurs. On a terminal the
/// lines fit its width.
void printCheckText(Selection const& selection, CheckFindings findings, Terminal const& terminal,
                    OutputBuffer& out);

/// Prints one JSON document with all findings.
void printCheckJson(Selection const& selection, Report const& report, CheckFindings findings,
                    OutputBuffer& out);

/// Prints one JSON object a line for each finding.
void printCheckJsonLines(Selection const& selection, CheckFindings findings, OutputBuffer& out);

/// Prints the run of SARIF 2.1.0 for one file; the document around the runs of all files has
/// sarifBegin before them and sarifEnd behind them.
void printCheckSarif(Selection const& selection, Report const& report, CheckFindings findings,
                     OutputBuffer& out);

inline constexpr std::string_view sarifBegin =
    "{\"$schema\":\"https://json.schemastore.org/sarif-2.1.0.json\",\"version\":\"2.1.0\","
    "\"runs\":[\n";
inline constexpr std::string_view sarifEnd = "]}\n";

}  // namespace Zorv::Tool
