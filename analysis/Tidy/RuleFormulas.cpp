#include "analysis/Tidy/RuleFormulas.h"

#include <utility>

#include "FormulaModel/DocTableIndex.h"
#include "Formulas/ParseExpr.h"
#include "Formulas/ShiftExpr.h"
#include "Formulas/ShiftFormulaText.h"
#include "workbook/Ranges.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Analysis {

namespace {

using DOM::FormulaSyntaxTree::Expr;

int offsetBetween(unsigned long a, unsigned long b) noexcept {
  return static_cast<int>(static_cast<long>(a) - static_cast<long>(b));
}

}  // namespace

std::optional<RuleFormulas::Exprs> RuleFormulas::read(WrittenRule const& rule) const {
  CellIndex const base = Workbook::findBaseCell(rule.rule->ranges);
  Exprs exprs;
  for (std::string const& text : rule.rule->formulas) {
    auto expr = parseAt(text, base);
    if (!expr) {
      return std::nullopt;
    }
    exprs.push_back(*std::move(expr));
  }
  return exprs;
}

std::optional<std::vector<std::string>> RuleFormulas::moveTo(WrittenRule const& rule,
                                                             CellIndex base) const {
  CellIndex const from = Workbook::findBaseCell(rule.rule->ranges);
  std::vector<std::string> texts;
  for (std::size_t at = 0; at < rule.rule->formulas.size(); ++at) {
    std::string const& formula = rule.rule->formulas[at];
    // Escapes of the file would be written without their meaning.
    bool const isLiteral = Workbook::trimXmlSpaces(rule.markup->formulas[at].text) == formula;
    auto moved = Formulas::shiftFormulaText(
        formula, offsetBetween(base.getColumn().get(), from.getColumn().get()),
        offsetBetween(base.getRow().get(), from.getRow().get()));
    if (!isLiteral || !moved || parseAt(*moved, base) != parseAt(formula, from)) {
      return std::nullopt;
    }
    texts.push_back(*std::move(moved));
  }
  return texts;
}

std::optional<Expr> RuleFormulas::parseAt(std::string const& text, CellIndex base) const {
  if (text.empty()) {
    return Expr();
  }
  try {
    return std::move(*Formulas::shiftExpr(
        Formulas::parseExpr(text), _context, -offsetBetween(base.getColumn().get(), 0),
        -offsetBetween(base.getRow().get(), 0), FormulaModel::DocTableIndex(_sheet), true));
  } catch (Formulas::FormulaParseError const&) {
    return std::nullopt;
  }
}

}  // namespace Zorv::Analysis
