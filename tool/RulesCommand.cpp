#include <ostream>

#include "ConditionalFormatters/CndFrmt_StyleHierarchy.h"
#include "tool/Commands.h"
#include "tool/JsonText.h"
#include "tool/RulesOutput.h"

namespace Zorv::Tool {

ExitStatus runRules(Selection const& selection, std::ostream& out) {
  if (selection.getOptions().format == OutputFormat::Json) {
    out << toJsonRules(selection) << '\n';
  } else {
    printRulesTable(selection, out);
  }
  return ExitStatus::Success;
}

DOM::CellStyle findStyle(Workbook::Document const& document, Workbook::Rule const& rule) {
  DOM::CellStyle style;
  style.setParentUUID(rule.format->getStyleUUID());
  return DOM::getOverridenAllPropsWithParentStyles(document.getStyles(), style,
                                                   DOM::TrackChangesViewMode::Final);
}

}  // namespace Zorv::Tool
