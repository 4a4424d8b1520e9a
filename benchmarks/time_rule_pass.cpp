// time_rule_pass FILE ROUNDS: the seconds of the processor that the quickest pass takes over the
// first sheet, in which it notes the first condition of each cell. benchmarks/compare_python.py
// compares the Python module with it.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <memory>
#include <vector>

#include <fmt/format.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "workbook/DocumentValueProvider.h"
#include "workbook/LoadWorkbook.h"

namespace {

namespace CF = Zorv::ConditionalFormatters;

double timePass(CF::TableResolver const& resolver, Zorv::TableRange const& used,
                std::vector<std::int32_t>& firsts) {
  std::clock_t const begin = std::clock();
  CF::TablePass const pass{.range = used, .positions = CF::TablePass::Positions::Formatted};
  resolver.visit(pass, [&](CF::ResolvedCell const& cell) {
    if (!cell.formats.empty()) {
      firsts[cell.cellInfo.getRowIndex() * used.endColumn + cell.cellInfo.getColIndex()] =
          static_cast<std::int32_t>(cell.formats.front());
    }
  });
  return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    fmt::print(stderr, "time_rule_pass FILE ROUNDS\n");
    return 2;
  }
  auto const document = Zorv::Workbook::loadWorkbook(argv[1]);
  CF::ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<Zorv::Workbook::DocumentValueProvider>(document, "en-US",
                                                              Zorv::DOM::TimeZone()));
  auto const& table = *document.getSheets().front().table;
  auto used = table.getUsedRange();
  used.firstRow = used.firstColumn = 0;
  std::vector<std::int32_t> firsts(used.endRow * used.endColumn, -1);
  auto const resolver = calculator.prepare(document.getStyles(), table);
  double best = std::numeric_limits<double>::infinity();
  // The first pass prepares the conditions.
  static_cast<void>(timePass(resolver, used, firsts));
  for (int round = std::atoi(argv[2]); round > 0; --round) {
    best = std::min(best, timePass(resolver, used, firsts));
  }
  fmt::print("{}\n", best);
}
