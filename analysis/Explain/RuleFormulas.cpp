#include "analysis/Explain/RuleFormulas.h"

#include <cstddef>
#include <memory>
#include <string>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/FormulaParseError.h"
#include "Formulas/ParseExpr.h"
#include "Formulas/WriteExpr.h"

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

/// Lists the formulas of each kind of record.
class FormulaLister : public boost::static_visitor<std::vector<RuleFormula>> {
public:
  explicit FormulaLister(Workbook::Rule const& rule) noexcept : _rule(rule) {}

  result_type operator()(DOM::UnaryConditionalFormatOperator const& record) const {
    return {make(0, record.getArgument())};
  }
  result_type operator()(DOM::BinaryConditionalFormatOperator const& record) const {
    return {make(0, record.getFirstArgument()), make(1, record.getSecondArgument())};
  }
  result_type operator()(DOM::TextConditionalFormatOperator const& record) const {
    auto const* const expr = boost::get<std::unique_ptr<Expr>>(&record.getArgument());
    if (expr == nullptr) {
      return {};
    }
    // Text rules are written with a helper formula around the formula of their text.
    return {_rule.needleFormula.empty()
                ? make(0, **expr)
                : RuleFormula{findWritten(_rule.needleFormula, **expr), expr->get()}};
  }
  template <class Record>
  result_type operator()(Record const& /*record*/) const {
    return {};
  }

private:
  [[nodiscard]] RuleFormula make(std::size_t index, Expr const& expr) const {
    bool const isInFile = index < _rule.formulas.size();
    return {findWritten(isInFile ? _rule.formulas[index] : std::string(), expr), &expr};
  }

  Workbook::Rule const& _rule;
};

}  // namespace

std::vector<RuleFormula> listFormulas(Workbook::Rule const& rule) {
  return boost::apply_visitor(FormulaLister(rule), rule.format->getOperator());
}

}  // namespace Zorv::Analysis
