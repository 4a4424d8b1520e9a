#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "OfficeUtils/PinnedMoment.h"
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

void judge(Workbook::Rule const& rule, SheetConditions const& conditions,
           Selection const& selection, std::ostream& out, Report const& report) {
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

/// The rules of a sheet among those that are looked at, without those that are not resolved.
std::vector<Workbook::Rule const*> findRules(Selection const& selection, std::size_t sheet) {
  auto rules = selection.getRules();
  std::erase_if(rules, [sheet](Workbook::Rule const* rule) {
    return rule->sheet != sheet || rule->format == nullptr;
  });
  return rules;
}

}  // namespace

ExitStatus runVerdicts(Selection const& selection, std::ostream& out, Report& report) {
  auto const& document = selection.getDocument();
  auto const& options = selection.getOptions();
  ConditionalFormatters::ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<Workbook::DocumentValueProvider>(document, options.localeName,
                                                        options.timeZone));
  OfficeUtils::PinnedMoment const pinned(options.now);  // one for all verdicts
  out << "sheet\tcell\trule\tkind\tholds\n";
  // Rules are numbered sheet by sheet.
  for (auto const index : selection.getSheets()) {
    auto const& table = *document.getSheets()[index].table;
    auto const rules = findRules(selection, index);
    auto const resolver = calculator.prepare(document.getStyles(), table);
    SheetConditions const conditions(
        resolver, calculator.getConditionalFormatRefs(table), rules,
        [&](Workbook::Rule const& failed, DOM::CellInfo const& cell, char const* problem) {
          report.sayFailure(failed, cell.getCellIndex(), problem);
        });
    for (auto const* rule : rules) {
      judge(*rule, conditions, selection, out, report);
    }
  }
  return ExitStatus::Success;
}

}  // namespace Zorv::Tool
