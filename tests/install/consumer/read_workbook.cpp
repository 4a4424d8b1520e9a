// Prints the cells of a workbook that get something from its conditional formats, one a line as
// SHEET,CELL: what the tool prints in its first columns. Reads the file twice, by its path and from
// memory, and fails when that is not the same.

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include <zorv/DOM/A1Notation.h>
#include <zorv/Utils/WorkBudget.h>
#include <zorv/workbook/DocumentResolver.h>
#include <zorv/workbook/LoadWorkbook.h>

namespace {

namespace Workbook = Zorv::Workbook;
using Zorv::ConditionalFormatters::TablePass;
using Zorv::DOM::A1Notation::toAddress;

std::vector<std::string> listFormattedCells(Workbook::Document const& document) {
  std::vector<std::string> lines;
  Workbook::DocumentResolver const resolver(document);
  for (std::size_t index = 0; index < document.getSheets().size(); ++index) {
    Workbook::Sheet const& sheet = document.getSheets()[index];
    Workbook::SheetResolver const prepared = resolver.prepare(index);
    prepared.getVisualResolver().visit(
        {.range = sheet.table->getUsedRange()}, [&](Zorv::Visuals::VisualCell const& cell) {
          if (cell.resolved.style || !cell.visuals.isEmpty()) {
            lines.push_back(sheet.name + ',' + toAddress(cell.resolved.cellInfo.getCellIndex()));
          }
        });
  }
  return lines;
}

std::string readBytes(char const* file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// Exceptions of the libraries are caught by their types.
bool refusesBadInput(std::string const& bytes) {
  try {
    static_cast<void>(Workbook::loadWorkbook(std::as_bytes(std::span(bytes).first(100))));
    return false;
  } catch (Workbook::LoadError const& error) {
    if (error.getFile() != "workbook in memory") {
      return false;
    }
  }
  Zorv::WorkBudget budget({.steps = 10});
  try {
    static_cast<void>(Workbook::loadWorkbook(std::as_bytes(std::span(bytes)), {.budget = &budget}));
    return false;
  } catch (Zorv::WorkBudgetExceeded const&) {
    return true;
  }
}

}  // namespace

int main(int, char** arguments) {
  char const* const file = arguments[1];
  auto const lines = listFormattedCells(Workbook::loadWorkbook(file));
  std::string const bytes = readBytes(file);
  if (listFormattedCells(Workbook::loadWorkbook(std::as_bytes(std::span(bytes)))) != lines ||
      !refusesBadInput(bytes)) {
    return EXIT_FAILURE;
  }
  std::ranges::copy(lines, std::ostream_iterator<std::string>(std::cout, "\n"));
}
