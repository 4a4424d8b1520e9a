// Resolves a table cell by cell and as a whole, which must give the same styles and failures.
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <typeindex>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/ParseExpr.h"
#include "OfficeUtils/PinnedMoment.h"
#include "Utils/WorkBudget.h"
#include "fuzz/Fuzzing.h"
#include "tests/support/PlainHost.h"

namespace {

using namespace Zorv;
using namespace ConditionalFormatters;
using namespace DOM;
using Fuzzing::FuzzInput;

FormulaSyntaxTree::Expr takeFormula(FuzzInput& input) {
  std::string const text = input.takeLine();
  if (!Fuzzing::mayCallChance(text)) {
    try {
      return Formulas::parseExpr(text);
    } catch (Formulas::FormulaParseError const&) {
    }
  }
  static auto const plain = Formulas::parseExpr("A1>1");
  return plain;
}

ConditionalFormatOperator takeCondition(FuzzInput& input) {
  switch (input.takeBelow(7)) {
    case 0:
      return NullaryConditionalFormatOperator(
          static_cast<NullaryConditionalFormatType>(input.takeBelow(14)));
    case 1:
      return UniquenessConditionalFormatOperator{static_cast<UniquenessType>(input.takeBelow(2))};
    case 2:
      return TopBottomConditionalFormatOperator(
          static_cast<TopBottomConditionalFormatType>(input.takeBelow(2)), input.takeByte(),
          input.takeBoolean());
    case 3:
      return AboveAverageConditionalFormatOperator(
          static_cast<AboveAverageConditionalFormatType>(input.takeBelow(4)));
    case 4: {
      auto first = takeFormula(input);
      return BinaryConditionalFormatOperator(
          static_cast<BinaryConditionalFormatType>(input.takeBelow(2)), std::move(first),
          takeFormula(input));
    }
    case 5:
      return TextConditionalFormatOperator(
          static_cast<TextConditionalFormatType>(input.takeBelow(4)),
          std::make_unique<FormulaSyntaxTree::Expr>(takeFormula(input)));
    default:
      return UnaryConditionalFormatOperator(
          static_cast<UnaryConditionalFormatType>(input.takeBelow(7)), takeFormula(input));
  }
}

TableRange takeRange(FuzzInput& input) {
  unsigned const corner = input.takeBelow(32);
  unsigned const size = input.takeBelow(32);
  return {corner / 4, corner % 4, corner / 4 + size / 4 + 1, corner % 4 + size % 4 + 1};
}

/// A style for each of the formats, which may have another one as its parent.
void fillTable(FuzzInput& input, Table& table, Styles& styles) {
  input.fillTable(table);
  std::vector<UUID> names;
  for (unsigned left = input.takeBelow(6); left > 0; --left) {
    auto const name = UUID::generate();
    auto& style = styles.getTableStyles()[name];
    style.setRunProps(std::make_shared<RunProps const>(
        RunProps{.fontSize = static_cast<double>(input.takeBelow(20)), .bold = true}));
    names.push_back(name);
    std::vector<TableRange> ranges(1 + input.takeBelow(3));
    for (TableRange& range : ranges) {
      range = takeRange(input);
    }
    auto const named = names[input.takeBelow(static_cast<unsigned>(names.size()))];
    bool const stops = input.takeBelow(4) == 0;
    table.addConditionalFormat(ranges, takeCondition(input), named, stops);
  }
}

/// The style of a cell, or the type of the exception in its place.
struct Answer {
  SharedCellStylePtr style;
  std::type_index thrown = typeid(void);

  [[nodiscard]] bool metALimit() const {
    return thrown == std::type_index(typeid(Formulas::EvaluationLimitError));
  }
  friend bool operator==(Answer const&, Answer const&) = default;
};

Answer findAnswer(std::function<SharedCellStylePtr()> const& resolve) {
  try {
    return {.style = resolve()};
  } catch (std::exception const& exception) {
    return {.style = nullptr, .thrown = typeid(exception)};
  }
}

constexpr TableRange visited = {0, 0, 9, 5};

/// The answers of one pass over all positions, row by row.
std::vector<Answer> resolveInPass(TableResolver const& resolver, WorkBudget& budget) {
  std::vector<Answer> answers;
  answers.reserve(visited.endRow * visited.endColumn);
  resolver.visit({.range = visited,
                  .positions = TablePass::Positions::All,
                  .onFailure = TablePass::OnFailure::Skip,
                  .budget = &budget},
                 [&](ResolvedCell const& cell) {
                   answers.push_back(findAnswer([&] {
                     if (cell.failure != nullptr) {
                       std::rethrow_exception(cell.failure->exception);
                     }
                     return cell.style;
                   }));
                 });
  return answers;
}

/// Equality of both answers. A value that the whole table looks up at once takes fewer steps for a
/// cell.
void requireSame(Answer const& alone, Answer const& amongAll) {
  Fuzzing::require(alone == amongAll || alone.metALimit() || amongAll.metALimit(),
                   "a cell resolves alone as it does in its table");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzInput input(data, size);
  Table table;
  Styles styles;
  fillTable(input, table, styles);
  OfficeUtils::PinnedMoment const moment(Fuzzing::getFixedMoment());
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<TestSupport::PlainValueContextProvider>(table));
  auto const resolver = calculator.prepare(styles, table);
  std::vector<Answer> answers;
  try {
    // What the budget allows here is cheap enough cell by cell.
    WorkBudget budget(Fuzzing::formulaLimits);
    answers = resolveInPass(resolver, budget);
  } catch (WorkEnded const&) {
    return 0;
  }
  auto inPass = answers.begin();
  for (unsigned long row = 0; row < visited.endRow; ++row) {
    for (unsigned long column = 0; column < visited.endColumn; ++column) {
      CellInfo const cell = table.getCellInfo(row, column);
      auto const alone = findAnswer([&] { return calculator.resolve(styles, cell); });
      requireSame(alone, findAnswer([&] { return resolver.resolve(cell); }));
      requireSame(alone, *inPass++);
    }
  }
  return 0;
}
