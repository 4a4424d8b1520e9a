#include "analysis/Diff/ConditionIds.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <fmt/format.h>
#include <boost/container_hash/hash.hpp>
#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/ShiftExpr.h"

namespace Zorv::Analysis {

namespace {

using DOM::FormulaSyntaxTree::Expr;

/// Puts the form of one condition together.
class FormMaker : public boost::static_visitor<void> {
public:
  FormMaker(Workbook::Rule const& rule, Formulas::TableContext const& context,
            ConditionForm& form) noexcept
      : _rule(rule), _context(context), _form(form) {
    for (TableRange const& range : rule.ranges) {
      _firstRow = std::min(_firstRow, range.firstRow);
      _firstColumn = std::min(_firstColumn, range.firstColumn);
    }
  }

  void operator()(DOM::NullaryConditionalFormatOperator const& condition) const {
    addType(condition.getType());
  }
  void operator()(DOM::UnaryConditionalFormatOperator const& condition) const {
    addType(condition.getType());
    addFormula(condition.getArgument());
  }
  void operator()(DOM::BinaryConditionalFormatOperator const& condition) const {
    addType(condition.getType());
    addFormula(condition.getFirstArgument());
    addFormula(condition.getSecondArgument());
  }
  void operator()(DOM::TextConditionalFormatOperator const& condition) const {
    addType(condition.getType());
    if (auto const* const text = boost::get<std::string>(&condition.getArgument())) {
      _form.text += *text;
    } else {
      addFormula(*boost::get<std::unique_ptr<Expr>>(condition.getArgument()));
    }
  }
  void operator()(DOM::TopBottomConditionalFormatOperator const& condition) const {
    addType(condition.getType());
    _form.text += fmt::format("{} {}", condition.getValue(), condition.getUsePercent());
  }
  void operator()(DOM::AboveAverageConditionalFormatOperator const& condition) const {
    addType(condition.getType());
    _form.text += fmt::format("{}", condition.getStdDev().value_or(0));
  }
  void operator()(DOM::UniquenessConditionalFormatOperator const& condition) const {
    addType(condition.type);
  }

private:
  template <class Type>
  void addType(Type type) const {
    _form.text += fmt::format("{} ", static_cast<int>(type));
  }

  void addFormula(Expr const& formula) const {
    _form.formulas.push_back(std::move(*Formulas::shiftExpr(
        formula, _context, -static_cast<int>(_firstColumn), -static_cast<int>(_firstRow),
        FormulaModel::DocTableIndex(_rule.sheet), true)));
  }

  Workbook::Rule const& _rule;
  Formulas::TableContext const& _context;
  ConditionForm& _form;
  unsigned long _firstRow = DOM::Table::rowCount;
  unsigned long _firstColumn = DOM::Table::columnCount;
};

std::size_t hashOf(ConditionForm const& form) {
  std::size_t hash = boost::hash<std::string>()(form.text);
  for (Expr const& formula : form.formulas) {
    for (auto const& node : formula.getParts().nodes) {
      boost::hash_combine(hash, static_cast<int>(node.kind));
      boost::hash_combine(hash, static_cast<int>(node.op));
      boost::hash_combine(hash, node.number);
    }
    for (auto const& reference : formula.getParts().references) {
      boost::hash_combine(hash, reference.firstRow);
      boost::hash_combine(hash, reference.firstColumn);
    }
    for (std::string const& text : formula.getParts().texts) {
      boost::hash_combine(hash, text);
    }
  }
  return hash;
}

}  // namespace

ConditionForm makeConditionForm(Workbook::Rule const& rule, Formulas::TableContext const& context) {
  ConditionForm form;
  if (rule.format != nullptr) {
    form.text = rule.type + ' ' + rule.operatorText + ' ';
    boost::apply_visitor(FormMaker(rule, context, form), rule.format->getOperator());
  } else {
    form.text = "not resolved " + rule.type + ' ' + rule.operatorText;
    for (std::string const& formula : rule.formulas) {
      form.text += '\n';
      form.text += formula;
    }
  }
  return form;
}

std::size_t ConditionIds::getOrCreate(ConditionForm form) {
  auto& entries = _byHash[hashOf(form)];
  auto const found = std::ranges::find(entries, form, &Entry::form);
  if (found != entries.end()) {
    return found->id;
  }
  entries.push_back({std::move(form), _count});
  return _count++;
}

}  // namespace Zorv::Analysis
