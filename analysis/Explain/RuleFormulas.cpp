#include "analysis/Explain/RuleFormulas.h"

#include <cstddef>
#include <string>

#include <boost/variant/get.hpp>

#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/FormulaParseError.h"
#include "Formulas/ParseExpr.h"
#include "Formulas/WriteExpr.h"
#include "workbook/ConditionFormulas.h"

namespace Zorv::Analysis {

namespace {

using DOM::FormulaSyntaxTree::Expr;

/// The text of a rule's formula: the one in the file, if it means the same.
std::string findWritten(std::string const& inFile, Expr const& expr) {
  try {
    if (Formulas::parseExpr(inFile) == expr) {
      return inFile;
    }
  } catch (Formulas::FormulaParseError const&) {
    // The formula was made from something else.
  }
  return Formulas::writeExpr(expr);
}

/// The text from which the formula at an index was made, as far as the file has one.
std::string const& findSource(Workbook::Rule const& rule, std::size_t index) {
  static std::string const none;
  // Text rules are written with a helper formula around the formula of their text.
  if (!rule.needleFormula.empty() &&
      boost::get<DOM::TextConditionalFormatOperator>(&rule.format->getOperator()) != nullptr) {
    return rule.needleFormula;
  }
  return index < rule.formulas.size() ? rule.formulas[index] : none;
}

}  // namespace

std::vector<RuleFormula> listFormulas(Workbook::Rule const& rule) {
  std::vector<RuleFormula> formulas;
  for (Expr const* const expr : Workbook::listFormulas(rule.format->getOperator())) {
    formulas.push_back({findWritten(findSource(rule, formulas.size()), *expr), expr});
  }
  return formulas;
}

}  // namespace Zorv::Analysis
