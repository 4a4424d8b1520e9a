#include "ConditionalFormatters/WholeTable/CndFrmt_FormulaConditions.h"

#include <functional>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/Predicates/CndFrmt_Truth.h"
#include "Formulas/ContextProvider.h"
#include "OfficeUtils/FormulaValueCast.h"

namespace Zorv::ConditionalFormatters {

namespace {

using Value = boost::optional<FormulaValue>;

/// The text of a value: its own if it is a text, and else one that is put into `ownText`.
std::string const& toText(FormulaValue const& value,
                          Formulas::ContextProvider const& contextProvider, std::string& ownText) {
  if (auto const* string = boost::get<FormulaModel::FormulaString>(&value)) {
    return string->value;
  }
  ownText =
      OfficeUtils::FormulaValueCast::toString(value, contextProvider.getLocaleContext(), nullptr);
  return ownText;
}

/// The same for the value of a cell; conditions of one pass share what is made.
std::string const& toText(TestedCell const& cell, Formulas::ContextProvider const& contextProvider,
                          PassContext& pass) {
  FormulaValue const& value = cell.data.value;
  if (auto const* string = boost::get<FormulaModel::FormulaString>(&value)) {
    return string->value;
  }
  return pass.getOrMakeText(cell.data.cellIndex, [&] {
    return OfficeUtils::FormulaValueCast::toString(value, contextProvider.getLocaleContext(),
                                                   nullptr);
  });
}

Value evaluate(PreparedFormula const& formula, TestedCell const& cell, PassContext& pass) {
  Value ownValue;
  return formula.evaluate(cell.data.cellIndex, pass.getSession(), ownValue);
}

}  // namespace

bool ComparisonCondition::holds(TestedCell const& cell, PassContext& pass) const {
  Value ownValue;
  Value const& argument = _argument.evaluate(cell.data.cellIndex, pass.getSession(), ownValue);
  if (_compare == nullptr) {
    throw std::bad_function_call();
  }
  return _compare(cell.data.value, argument);
}

ConditionOperands ComparisonCondition::findOperands(TestedCell const& cell,
                                                    PassContext& pass) const {
  return ArgumentOperand{evaluate(_argument, cell, pass)};
}

TruthCondition::TruthCondition(FormulaOrigin const& origin,
                               DOM::FormulaSyntaxTree::Expr const& argument)
    : _locale(origin.contextProvider.getLocaleContext()), _argument(origin, argument) {}

bool TruthCondition::holds(TestedCell const& cell, PassContext& pass) const {
  if (auto const compared = _argument.compare(cell.data.cellIndex, cell.cell)) {
    return *compared;
  }
  Value ownValue;
  Value const& argument = _argument.evaluate(cell.data.cellIndex, pass.getSession(), ownValue);
  return isTrueWithoutThrowing(argument, _locale);
}

ConditionOperands TruthCondition::findOperands(TestedCell const& cell, PassContext& pass) const {
  return ArgumentOperand{evaluate(_argument, cell, pass)};
}

bool BoundsCondition::holds(TestedCell const& cell, PassContext& pass) const {
  // The upper bound first: if both throw, its exception is the one that callers see.
  Value ownUpper;
  Value const& upper = _upper.evaluate(cell.data.cellIndex, pass.getSession(), ownUpper);
  Value ownLower;
  Value const& lower = _lower.evaluate(cell.data.cellIndex, pass.getSession(), ownLower);
  return _test(cell.data.value, lower, upper);
}

ConditionOperands BoundsCondition::findOperands(TestedCell const& cell, PassContext& pass) const {
  BoundsOperand bounds;
  bounds.upper = evaluate(_upper, cell, pass);
  bounds.lower = evaluate(_lower, cell, pass);
  return bounds;
}

bool LiteralTextCondition::holds(TestedCell const& cell, PassContext& pass) const {
  return _test(toText(cell, _contextProvider, pass), _pattern);
}

ConditionOperands LiteralTextCondition::findOperands(TestedCell const& /*cell*/,
                                                     PassContext& /*pass*/) const {
  return PatternOperand{_pattern};
}

bool FormulaTextCondition::holds(TestedCell const& cell, PassContext& pass) const {
  Value ownValue;
  Value const& argument = _pattern.evaluate(cell.data.cellIndex, pass.getSession(), ownValue);
  if (!argument) {
    return false;
  }
  // The pattern first: if both casts throw, its exception is the one that callers see.
  std::string ownPattern;
  std::string const& pattern = toText(*argument, _contextProvider, ownPattern);
  return _test(toText(cell, _contextProvider, pass), pattern);
}

ConditionOperands FormulaTextCondition::findOperands(TestedCell const& cell,
                                                     PassContext& pass) const {
  PatternOperand operand;
  if (auto const argument = evaluate(_pattern, cell, pass)) {
    std::string ownPattern;
    operand.pattern = toText(*argument, _contextProvider, ownPattern);
  }
  return operand;
}

}  // namespace Zorv::ConditionalFormatters
