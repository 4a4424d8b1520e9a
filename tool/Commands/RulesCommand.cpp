#include "tool/Commands/Commands.h"
#include "tool/Output/JsonText.h"
#include "tool/Output/RulesOutput.h"

namespace Zorv::Tool {

void runRules(CommandContext const& context) {
  if (context.selection.getOptions().format == OutputFormat::Json) {
    context.out.text() += toJsonRules(context.selection, context.report) + "\n";
    context.out.endEntry();
  } else {
    printRulesTable(context.selection, context.out);
  }
}

}  // namespace Zorv::Tool
