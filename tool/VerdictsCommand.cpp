#include <ostream>
#include <string>

#include <fmt/format.h>

#include "tool/Commands.h"
#include "tool/PositionUnion.h"
#include "tool/SheetConditions.h"
#include "tool/TextTable.h"
#include "workbook/Addresses.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::Tool {

namespace {

/// Other programs judge empty positions somewhat beyond the last cells, too.
constexpr unsigned long margin = 10;

void judge(Workbook::Rule const& rule, SheetConditions& conditions, Selection const& selection,
           std::ostream& out, Report const& report) {
  auto const& sheet = selection.getDocument().getSheets()[rule.sheet];
  auto const sheetName = toPrintable(sheet.name);
  auto const judgeCell = [&](DOM::CellInfo const& cellInfo) {
    if (auto const holds = conditions.holds(rule, cellInfo)) {
      out << fmt::format("{}\t{}\t{}\t{}\t{}\n", sheetName,
                         Workbook::toAddress(cellInfo.getCellIndex()), rule.number, rule.type,
                         *holds ? 1 : 0);
    }
  };
  PositionUnion const positions(rule.ranges, selection.getBounds(rule.sheet, margin));
  if (positions.size() <= mostPositions) {
    positions.forEachPosition(*sheet.table, judgeCell);
  } else {
    report.saySparse(rule.sheet, positions.size());
    positions.forEachCell(*sheet.table, judgeCell);
  }
}

}  // namespace

ExitStatus runVerdicts(Selection const& selection, std::ostream& out, Report& report) {
  auto const& options = selection.getOptions();
  Workbook::DocumentValueProvider const provider(selection.getDocument(), options.localeName,
                                                 options.timeZone);
  out << "sheet\tcell\trule\tkind\tholds\n";
  for (auto const* rule : selection.getRules()) {
    if (rule->format) {
      SheetConditions conditions(
          provider, *selection.getDocument().getSheets()[rule->sheet].table, {rule},
          [&](Workbook::Rule const& failed, DOM::CellInfo const& cell, char const* problem) {
            report.sayFailure(failed, cell.getCellIndex(), problem);
          });
      judge(*rule, conditions, selection, out, report);
    }
  }
  return ExitStatus::Success;
}

}  // namespace Zorv::Tool
