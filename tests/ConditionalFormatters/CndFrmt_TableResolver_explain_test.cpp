#include <exception>
#include <memory>
#include <set>
#include <string_view>
#include <typeindex>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "ConditionalFormatters/RandomTable.h"
#include "DOM/SetProperties.h"
#include "OfficeUtils/Clock.h"
#include "support/PlainHost.h"
#include "support/RunningClock.h"
#include "support/Values.h"

// TableResolver::explain(): the account of one cell agrees with the answers of the other
// operations.
namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;

/// Report of a pass about a cell.
struct VisitedCell {
  DOM::SharedCellStylePtr style;
  FormatIndices holding;
  boost::optional<FormatIndex> failed;
  std::type_index thrown = typeid(void);
};

std::type_index typeOf(std::exception_ptr const& exception) {
  try {
    std::rethrow_exception(exception);
  } catch (std::exception const& thrown) {
    return typeid(thrown);
  }
}

VisitedCell visitCell(TableResolver const& resolver, DOM::CellInfo const& cell) {
  VisitedCell visited;
  TableRange const range{cell.getRowIndex(), cell.getColIndex(), cell.getRowIndex() + 1,
                         cell.getColIndex() + 1};
  resolver.visit({.range = range,
                  .positions = TablePass::Positions::All,
                  .onFailure = TablePass::OnFailure::Skip},
                 [&](ResolvedCell const& resolved) {
                   visited.style = resolved.style;
                   visited.holding.assign(resolved.formats.begin(), resolved.formats.end());
                   if (resolved.failure != nullptr) {
                     visited.failed = resolved.failure->format;
                     visited.thrown = typeOf(resolved.failure->exception);
                   }
                 });
  return visited;
}

FormatIndices listFormats(CellExplanation const& explanation, FormatOutcome outcome) {
  FormatIndices formats;
  for (FormatIndex format = 0; format < explanation.formats.size(); ++format) {
    if (explanation.formats[format].outcome == outcome) {
      formats.push_back(format);
    }
  }
  return formats;
}

/// The properties that formats contribute, each once, against those that the style sets.
void checkProperties(CellExplanation const& explanation) {
  std::set<std::string_view> contributed;
  for (FormatExplanation const& format : explanation.formats) {
    for (PropertyShare const& share : format.properties) {
      bool const isNew = contributed.insert(share.name).second;
      RC_ASSERT(isNew != share.takenBy.has_value());
    }
  }
  std::set<std::string_view> set;
  if (explanation.style) {
    DOM::forEachSetProperty(
        explanation.style->get(),
        [&](std::string_view name, auto const& /*value*/) { set.insert(name); });
  }
  RC_ASSERT(contributed == set);
}

RC_GTEST_PROP(TableResolverExplain, AgreesWithTheOtherOperationsForEveryCell, ()) {
  OfficeUtils::ScopedClock const clock(noonOn21November());
  RandomTable const random({.withUnknownKinds = true});
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<PlainValueContextProvider>(random.table));
  auto const resolver = calculator.prepare(random.styles, random.table);
  for (unsigned long row = 0; row < RandomTable::rows + 2; ++row) {
    for (unsigned long column = 0; column < RandomTable::columns + 2; ++column) {
      auto const cell = random.table.getCellInfo(row, column);
      auto const explanation = resolver.explain(cell);
      auto const visited = visitCell(resolver, cell);
      RC_ASSERT(explanation.style == visited.style);
      RC_ASSERT(listFormats(explanation, FormatOutcome::Holds) == visited.holding);
      auto const failed = listFormats(explanation, FormatOutcome::Failed);
      RC_ASSERT(failed.size() == (visited.failed ? 1U : 0U));
      if (visited.failed) {
        RC_ASSERT(failed.front() == *visited.failed);
        RC_ASSERT(typeOf(explanation.formats[failed.front()].failure) == visited.thrown);
      } else {
        checkProperties(explanation);
      }
    }
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
