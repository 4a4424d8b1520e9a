// Says what a cell of a workbook looks like, and why: explain_cell FILE SHEET CELL

#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>

#include <zorv/DOM/A1Notation.h>
#include <zorv/workbook/DocumentResolver.h>
#include <zorv/workbook/LoadWorkbook.h>

using namespace Zorv;
using namespace Zorv::ConditionalFormatters;

namespace {

std::string_view describe(FormatOutcome outcome) {
  switch (outcome) {
    case FormatOutcome::NotOnThisCell:
      return "is not on this cell";
    case FormatOutcome::DoesNotHold:
      return "does not hold";
    case FormatOutcome::Holds:
      return "holds";
    case FormatOutcome::Failed:
      return "failed";
    case FormatOutcome::NotReached:
      return "was not reached";
  }
  return "";
}

std::string toText(DOM::Colour const& colour) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%02X%02X%02X", colour.red, colour.green, colour.blue);
  return text.data();
}

void print(DOM::CellStyle const& style) {
  if (auto const& run = style.getRunProps(); run && run->colour) {
    std::cout << "text " << toText(*run->colour) << (run->bold == true ? ", bold" : "") << '\n';
  }
  if (auto const& cell = style.getCellProps(); cell && cell->fillColour) {
    std::cout << "fill " << toText(*cell->fillColour) << '\n';
  }
}

void print(Workbook::Rule const& rule, FormatExplanation const& format) {
  std::cout << rule.type;
  for (std::string const& formula : rule.formulas) {
    std::cout << ' ' << formula;
  }
  std::cout << " on " << rule.rangeText << ' ' << describe(format.outcome) << '\n';
  for (PropertyShare const& property : format.properties) {
    std::cout << "  " << property.name << (property.takenBy ? " is taken\n" : " is set\n");
  }
}

// [explain]
/// Prints what became of each rule in whose ranges the cell is, by priority.
void explain(Workbook::SheetResolver const& sheet, DOM::CellInfo const& cell) {
  CellExplanation const account = sheet.getTableResolver().explain(cell);
  for (FormatIndex index = 0; index < account.formats.size(); ++index) {
    FormatExplanation const& format = account.formats[index];
    if (format.outcome != FormatOutcome::NotOnThisCell) {
      print(sheet.getRules().ruleOf(index), format);
    }
  }
}
// [explain]

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: explain_cell FILE SHEET CELL\n";
    return 2;
  }
  try {
    // [effective]
    Workbook::Document const document = Workbook::loadWorkbook(argv[1]);
    auto const sheet = document.findSheet(argv[2]);
    auto const cell = DOM::A1Notation::parseCell(argv[3]);
    if (!sheet || !cell) {
      throw std::invalid_argument("there is no such sheet or cell");
    }
    Workbook::DocumentResolver const resolver(document);
    Workbook::SheetResolver const resolved = resolver.prepare(*sheet);
    DOM::Table const& table = *document.getSheets()[*sheet].table;
    DOM::CellInfo const info = table.getCellInfo(cell->getRow().get(), cell->getColumn().get());
    print(resolved.findEffectiveStyle(info));
    // [effective]
    explain(resolved, info);
  } catch (std::exception const& failure) {
    std::cerr << "explain_cell: " << failure.what() << '\n';
    return EXIT_FAILURE;
  }
}
