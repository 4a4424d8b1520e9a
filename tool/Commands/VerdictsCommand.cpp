#include <cstddef>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "OfficeUtils/PinnedMoment.h"
#include "records/JsonText.h"
#include "tool/Commands/Commands.h"
#include "tool/Commands/CoveredAreas.h"
#include "tool/Output/FieldLines.h"
#include "tool/Output/JsonDocument.h"
#include "workbook/DocumentResolver.h"

namespace Zorv::Tool {

namespace {

namespace CF = ConditionalFormatters;

/// Other programs format empty positions somewhat beyond the last cells, too.
constexpr unsigned long margin = 10;

/// The texts of a verdict's line that are the same for all cells of a rule.
struct LineTexts {
  std::string front;       ///< up to the address
  std::string endIfHolds;  ///< from behind the address on
  std::string endIfNot;
};

LineTexts makeJsonTexts(Selection const& selection, Workbook::Rule const& rule) {
  std::string end = fmt::format("\",\"rule\":{},\"kind\":", rule.number);
  Records::appendJsonText(end, rule.type);
  end += ",\"holds\":";
  return {.front = beginJsonLine(selection, selection.getDocument().getSheets()[rule.sheet]) +
                   ",\"cell\":\"",
          .endIfHolds = end + "true}\n",
          .endIfNot = end + "false}\n"};
}

LineTexts makeFieldTexts(Selection const& selection, Workbook::Rule const& rule) {
  auto const separator = FieldLines::separatorOf(selection.getOptions());
  auto const character = static_cast<char>(separator);
  std::string front;
  if (selection.getOptions().files.size() > 1) {
    appendField(front, selection.getFile(), separator);
    front += character;
  }
  appendField(front, selection.getDocument().getSheets()[rule.sheet].name, separator);
  std::string end = fmt::format("{}{}{}", character, rule.number, character);
  appendField(end, rule.type, separator);
  end += character;
  return {.front = front + character, .endIfHolds = end + "1\n", .endIfNot = end + "0\n"};
}

void printVerdicts(CommandContext const& context, Workbook::Rule const& rule, std::size_t format,
                   CF::TableResolver const& resolver, CF::TablePass const& pass) {
  auto const texts = context.selection.getOptions().format == OutputFormat::JsonLines
                         ? makeJsonTexts(context.selection, rule)
                         : makeFieldTexts(context.selection, rule);
  resolver.visitVerdicts(format, pass, [&](CF::CellVerdict const& verdict) {
    auto const cell = verdict.cellInfo.getCellIndex();
    if (!context.selection.contains(rule.sheet, cell)) {
      return;
    }
    if (verdict.failure != nullptr) {
      context.report.addFailure(rule, cell, verdict.failure->exception);
      return;
    }
    auto& line = context.out.text();
    line += texts.front;
    line += DOM::A1Notation::toAddress(cell);
    line += verdict.holds ? texts.endIfHolds : texts.endIfNot;
    context.out.endEntry();
  });
}

void printSheet(CommandContext const& context, std::size_t sheet,
                Workbook::SheetResolver const& resolver) {
  CoveredAreas areas(context.selection, sheet, margin);
  for (auto const* rule : context.selection.getResolvedRules(sheet)) {
    if (rule->format == nullptr) {
      continue;  // a visual rule, which is no condition
    }
    auto pass = areas.makePass({&rule, 1});
    pass.threadCount = context.selection.getOptions().threadCount;
    pass.budget = &context.budget;
    printVerdicts(context, *rule, resolver.getRules().formatOf(*rule), resolver.getTableResolver(),
                  pass);
  }
  areas.sayLeftOut(context.report);
}

}  // namespace

void runVerdicts(CommandContext const& context) {
  auto const& options = context.selection.getOptions();
  Workbook::DocumentResolver const resolver(context.selection.getDocument(), options.localeName,
                                            options.timeZone);
  OfficeUtils::PinnedMoment const pinned(options.now);  // one for all verdicts
  if (context.isFirstFile && options.format != OutputFormat::JsonLines) {
    FieldLines(context.selection, context.out)
        .addHeadings({"sheet", "cell", "rule", "kind", "holds"});
  }
  try {
    // Rules are numbered sheet by sheet.
    for (auto const sheet : context.selection.getSheets()) {
      printSheet(context, sheet, resolver.prepare(sheet));
    }
  } catch (...) {
    context.report.setIncomplete();
    throw;
  }
}

}  // namespace Zorv::Tool
