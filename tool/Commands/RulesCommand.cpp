#include <ostream>

#include "tool/Commands/Commands.h"
#include "tool/Output/JsonText.h"
#include "tool/Output/RulesOutput.h"

namespace Zorv::Tool {

ExitStatus runRules(Selection const& selection, std::ostream& out) {
  if (selection.getOptions().format == OutputFormat::Json) {
    out << toJsonRules(selection) << '\n';
  } else {
    printRulesTable(selection, out);
  }
  return ExitStatus::Success;
}

}  // namespace Zorv::Tool
