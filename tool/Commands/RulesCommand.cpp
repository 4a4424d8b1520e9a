#include "tool/Commands/Commands.h"
#include "tool/Commands/FormulaProbe.h"
#include "tool/Output/JsonDocument.h"
#include "tool/Output/RulesOutput.h"

namespace Zorv::Tool {

void runRules(CommandContext const& context) {
  probeFormulas(context);
  switch (context.selection.getOptions().format) {
    case OutputFormat::Table:
      return printRulesTable(context.selection, context.terminal, context.out);
    case OutputFormat::Json:
      context.out.text() += toJsonRules(context.selection, context.report) + "\n";
      return context.out.endEntry();
    case OutputFormat::JsonLines:
      return printRulesJsonLines(context.selection, context.out);
    case OutputFormat::Sarif:  // refused on the command line
    case OutputFormat::Csv:
    case OutputFormat::Tsv:
      return printRulesFields(context.selection, context.isFirstFile, context.out);
  }
}

}  // namespace Zorv::Tool
