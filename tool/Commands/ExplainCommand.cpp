#include <algorithm>

#include <fmt/format.h>

#include "analysis/Explain/Explainer.h"
#include "tool/Commands/Commands.h"
#include "tool/Input/Errors.h"
#include "tool/Output/ExplainOutput.h"

namespace Zorv::Tool {

namespace {

std::unique_ptr<ExplainOutput> makeExplainOutput(CommandContext const& context,
                                                 OfficeUtils::LocaleContext const& locale) {
  switch (context.selection.getOptions().format) {
    case OutputFormat::Json:
      return makeExplainJson(context.selection, locale, context.report, context.out);
    case OutputFormat::JsonLines:
      return makeExplainJsonLines(context.selection, locale, context.out);
    default:
      return makeExplainText(context.selection, locale, context.terminal, context.out);
  }
}

/// The sheets whose cells are explained: if a rule is asked for, its sheet alone.
std::vector<std::size_t> findSheets(Selection const& selection) {
  auto const& number = selection.getOptions().rule;
  auto sheets = selection.getSheets();
  if (!number) {
    return sheets;
  }
  auto const& document = selection.getDocument();
  auto const* const rule = document.findRule(*number);
  if (rule == nullptr) {
    throw ContentError(fmt::format("{}: there is no rule {}; `cndfrmt rules` lists their numbers",
                                   selection.getFile(), *number));
  }
  std::erase_if(sheets, [&](std::size_t sheet) { return sheet != rule->sheet; });
  if (sheets.empty()) {
    throw ContentError(fmt::format("{}: rule {} is on the sheet \"{}\"; name a cell of that sheet",
                                   selection.getFile(), *number,
                                   document.getSheets()[rule->sheet].name));
  }
  return sheets;
}

/// Explains the selected cells one after the other.
class CellWalk {
public:
  CellWalk(CommandContext const& context, ExplainOutput& output)
      : _context(context),
        _output(output),
        _explainer(context.selection.getDocument(), context.selection.getOptions().localeName,
                   context.selection.getOptions().timeZone, &context.budget) {}

  void explain(std::size_t sheet, TableRange const& range) {
    for (auto row = range.firstRow; row < range.endRow; ++row) {
      for (auto column = range.firstColumn; column < range.endColumn; ++column) {
        explain(sheet, CellIndex{RowIndex(row), ColumnIndex(column)});
      }
    }
  }

private:
  void explain(std::size_t sheet, CellIndex cell) {
    auto const account = _explainer.explain(sheet, cell, _context.selection.getOptions().rule);
    for (auto const& rule : account.rules) {
      if (rule.outcome == Analysis::FormatOutcome::Failed) {
        _context.report.addFailure(*rule.rule, cell, rule.failure);
      }
    }
    _output.add(account);
  }

  CommandContext const& _context;
  ExplainOutput& _output;
  Analysis::Explainer _explainer;
};

}  // namespace

void runExplain(CommandContext const& context) {
  auto const& selection = context.selection;
  auto const sheets = findSheets(selection);
  OfficeUtils::LocaleContext const locale(selection.getOptions().localeName,
                                          selection.getDocument().getDateSystem());
  auto const output = makeExplainOutput(context, locale);
  try {
    CellWalk walk(context, *output);
    for (auto const sheet : sheets) {
      for (auto const& range : selection.getRanges(sheet)) {
        walk.explain(sheet, range);
      }
    }
  } catch (...) {
    context.report.setIncomplete();
    output->finish();
    throw;
  }
  output->finish();
}

}  // namespace Zorv::Tool
