#pragma once

#include <memory>

#include "OfficeUtils/LocaleContext.h"
#include "analysis/Explain/CellAccount.h"
#include "tool/Input/Selection.h"
#include "tool/Output/Report.h"
#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Terminal.h"

namespace Zorv::Tool {

/// Printer of the accounts of cells, in the order in which they are added.
class ExplainOutput {
public:
  ExplainOutput() = default;
  ExplainOutput(ExplainOutput const&) = delete;
  ExplainOutput& operator=(ExplainOutput const&) = delete;
  virtual ~ExplainOutput() = default;

  virtual void add(Analysis::CellAccount const& account) = 0;
  /// Ends the output, also where the work ended early. Must be called once.
  virtual void finish() = 0;
};

/// The outputs borrow their arguments.
[[nodiscard]] std::unique_ptr<ExplainOutput> makeExplainText(
    Selection const& selection, OfficeUtils::LocaleContext const& locale, Terminal const& terminal,
    OutputBuffer& out);
/// One document.
[[nodiscard]] std::unique_ptr<ExplainOutput> makeExplainJson(
    Selection const& selection, OfficeUtils::LocaleContext const& locale, Report const& report,
    OutputBuffer& out);
/// One object a line, each complete in itself.
[[nodiscard]] std::unique_ptr<ExplainOutput> makeExplainJsonLines(
    Selection const& selection, OfficeUtils::LocaleContext const& locale, OutputBuffer& out);

}  // namespace Zorv::Tool
