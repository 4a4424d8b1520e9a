#include <memory>
#include <string_view>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "tool/Commands.h"
#include "tool/PositionUnion.h"
#include "tool/ResolveOutput.h"
#include "tool/SheetConditions.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::Tool {

namespace {

/// Hands the cells of one selection, sheet by sheet, to an output.
class Resolver {
public:
  Resolver(Selection const& selection, Report& report, ResolveOutput& output)
      : _selection(selection),
        _report(report),
        _output(output),
        _provider(makeProvider(selection)),
        _calculator(makeProvider(selection)) {}

  void resolveSheet(std::size_t index) {
    auto const& sheet = _selection.getDocument().getSheets()[index];
    auto const& formatRefs = _calculator.getConditionalFormatRefs(*sheet.table);
    SheetConditions conditions(
        *_provider, *sheet.table, rulesOf(index),
        [this](Workbook::Rule const& rule, DOM::CellInfo const& cell, char const* problem) {
          _report.sayFailure(rule, cell.getCellIndex(), problem);
        });
    auto const styles = _calculator.prepare(_selection.getDocument().getStyles(), *sheet.table);
    auto const resolveCell = [&](DOM::CellInfo const& cellInfo) {
      auto deciding = conditions.findDeciding(formatRefs, cellInfo);
      if (deciding && !deciding->empty()) {
        _output.add({cellInfo, styles.resolve(cellInfo), std::move(*deciding)});
      }
    };

    _output.beginSheet(sheet);
    auto const positions = positionsOf(formatRefs, index);
    if (positions.size() <= mostPositions) {
      positions.forEachPosition(*sheet.table, resolveCell);
    } else {
      _report.saySparse(index, positions.size());
      positions.forEachCell(*sheet.table, resolveCell);
    }
  }

private:
  static std::unique_ptr<Workbook::DocumentValueProvider> makeProvider(Selection const& selection) {
    auto const& options = selection.getOptions();
    return std::make_unique<Workbook::DocumentValueProvider>(selection.getDocument(),
                                                             options.localeName, options.timeZone);
  }

  PositionUnion positionsOf(ConditionalFormatters::ConditionalFormatRefs const& formatRefs,
                            std::size_t sheet) const {
    std::vector<TableRange> ranges;
    for (auto const& formatRef : formatRefs) {
      ranges.insert(ranges.end(), formatRef.first.begin(), formatRef.first.end());
    }
    return {ranges, _selection.getBounds(sheet)};
  }

  /// All rules of a sheet: those that the selection leaves out are still those of the calculator.
  std::vector<Workbook::Rule const*> rulesOf(std::size_t sheet) const {
    std::vector<Workbook::Rule const*> rules;
    for (auto const& rule : _selection.getDocument().getRules()) {
      if (rule.sheet == sheet) {
        rules.push_back(&rule);
      }
    }
    return rules;
  }

  Selection const& _selection;
  Report& _report;
  ResolveOutput& _output;
  std::unique_ptr<Workbook::DocumentValueProvider> _provider;
  ConditionalFormatters::ConditionalFormattingPropsCalculator _calculator;
};

}  // namespace

ExitStatus runResolve(Selection const& selection, std::ostream& out, Report& report) {
  auto const& options = selection.getOptions();
  OfficeUtils::LocaleContext const locale(options.localeName,
                                          selection.getDocument().getDateSystem());
  auto const output = options.format == OutputFormat::Json ? makeResolveJson(selection, out)
                                                           : makeResolveTable(locale, out);
  Resolver resolver(selection, report, *output);
  for (auto const sheet : selection.getSheets()) {
    resolver.resolveSheet(sheet);
  }
  output->finish();
  return report.getFailureCount() == 0 ? ExitStatus::Success : ExitStatus::BadFile;
}

}  // namespace Zorv::Tool
