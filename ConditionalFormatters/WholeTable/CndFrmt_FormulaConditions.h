#pragma once

#include <string>
#include <vector>

#include "ConditionalFormatters/Predicates/CndFrmt_Between.h"
#include "ConditionalFormatters/Predicates/CndFrmt_Comparison.h"
#include "ConditionalFormatters/Predicates/CndFrmt_TextMatch.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedFormula.h"
#include "OfficeUtils/LocaleContext.h"

// Prepared conditions whose operands are formulas, or a literal text in the place of one.
namespace Zorv::ConditionalFormatters {

/// Compares with a formula. Throws std::bad_function_call for each cell, after the evaluation, if
/// the comparison is null.
class ComparisonCondition final : public PreparedCondition {
public:
  ComparisonCondition(Comparison compare, FormulaOrigin const& origin,
                      DOM::FormulaSyntaxTree::Expr const& argument)
      : _compare(compare), _argument(origin, argument) {}

  [[nodiscard]] bool holds(TestedCell const& cell, PassContext& pass) const override;
  [[nodiscard]] ConditionOperands findOperands(TestedCell const& cell,
                                               PassContext& pass) const override;
  [[nodiscard]] std::vector<PreparedFormula const*> listFormulas() const override {
    return {&_argument};
  }
  [[nodiscard]] bool comparesWithFormulas() const noexcept override { return true; }
  [[nodiscard]] bool hasGivenUp() const noexcept override { return _argument.hasGivenUp(); }

private:
  Comparison _compare;
  PreparedFormula _argument;
};

/// Asks whether a formula is true.
class TruthCondition final : public PreparedCondition {
public:
  TruthCondition(FormulaOrigin const& origin, DOM::FormulaSyntaxTree::Expr const& argument);

  [[nodiscard]] bool holds(TestedCell const& cell, PassContext& pass) const override;
  [[nodiscard]] ConditionOperands findOperands(TestedCell const& cell,
                                               PassContext& pass) const override;
  [[nodiscard]] std::vector<PreparedFormula const*> listFormulas() const override {
    return {&_argument};
  }
  [[nodiscard]] bool hasGivenUp() const noexcept override { return _argument.hasGivenUp(); }

private:
  OfficeUtils::LocaleContext _locale;
  PreparedFormula _argument;
};

/// Tests against two formulas.
class BoundsCondition final : public PreparedCondition {
public:
  BoundsCondition(BoundsTest test, FormulaOrigin const& origin,
                  DOM::FormulaSyntaxTree::Expr const& lower,
                  DOM::FormulaSyntaxTree::Expr const& upper)
      : _test(test), _lower(origin, lower), _upper(origin, upper) {}

  [[nodiscard]] bool holds(TestedCell const& cell, PassContext& pass) const override;
  [[nodiscard]] ConditionOperands findOperands(TestedCell const& cell,
                                               PassContext& pass) const override;
  [[nodiscard]] std::vector<PreparedFormula const*> listFormulas() const override {
    return {&_lower, &_upper};
  }
  [[nodiscard]] bool comparesWithFormulas() const noexcept override { return true; }
  [[nodiscard]] bool hasGivenUp() const noexcept override {
    return _lower.hasGivenUp() || _upper.hasGivenUp();
  }

private:
  BoundsTest _test;
  PreparedFormula _lower;
  PreparedFormula _upper;
};

/// Looks for a literal text. Borrows it, and the provider that tells the locale.
class LiteralTextCondition final : public PreparedCondition {
public:
  LiteralTextCondition(TextTest test, Formulas::ContextProvider const& contextProvider,
                       std::string const& pattern) noexcept
      : _test(test), _contextProvider(contextProvider), _pattern(pattern) {}

  [[nodiscard]] bool holds(TestedCell const& cell, PassContext& pass) const override;
  [[nodiscard]] ConditionOperands findOperands(TestedCell const& cell,
                                               PassContext& pass) const override;

private:
  TextTest _test;
  Formulas::ContextProvider const& _contextProvider;
  std::string const& _pattern;
};

/// Looks for the text of a formula.
class FormulaTextCondition final : public PreparedCondition {
public:
  FormulaTextCondition(TextTest test, FormulaOrigin const& origin,
                       DOM::FormulaSyntaxTree::Expr const& pattern)
      : _test(test), _contextProvider(origin.contextProvider), _pattern(origin, pattern) {}

  [[nodiscard]] bool holds(TestedCell const& cell, PassContext& pass) const override;
  [[nodiscard]] ConditionOperands findOperands(TestedCell const& cell,
                                               PassContext& pass) const override;
  [[nodiscard]] std::vector<PreparedFormula const*> listFormulas() const override {
    return {&_pattern};
  }
  [[nodiscard]] bool hasGivenUp() const noexcept override { return _pattern.hasGivenUp(); }

private:
  TextTest _test;
  Formulas::ContextProvider const& _contextProvider;
  PreparedFormula _pattern;
};

}  // namespace Zorv::ConditionalFormatters
