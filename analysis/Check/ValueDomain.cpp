#include "analysis/Check/ValueDomain.h"

#include <optional>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "FormulaModel/FormulaValueAccess.h"
#include "analysis/Check/Constants.h"

namespace Zorv::Analysis {

namespace {

using DOM::FormulaSyntaxTree::Expr;
using TextType = DOM::TextConditionalFormatType;

class DomainFinder : public boost::static_visitor<ValueDomain> {
public:
  DomainFinder(CheckedSheet const& sheet, Formulas::ContextProvider const& provider) noexcept
      : _sheet(sheet), _provider(provider) {}

  ValueDomain operator()(DOM::UnaryConditionalFormatOperator const& condition) const {
    using Type = DOM::UnaryConditionalFormatType;
    if (condition.getType() == Type::FormulaIsTrue) {
      return {};
    }
    auto const number = evaluateNumber(condition.getArgument());
    if (!number) {
      return {};
    }
    switch (condition.getType()) {
      case Type::Equal:
        return NumberInterval{.lower = *number, .upper = *number};
      case Type::Greater:
        return NumberInterval{.lower = *number, .lowerIsInside = false};
      case Type::GreaterOrEqual:
        return NumberInterval{.lower = *number};
      case Type::Less:
        return NumberInterval{.upper = *number, .upperIsInside = false};
      case Type::LessOrEqual:
        return NumberInterval{.upper = *number};
      default:
        return {};
    }
  }

  ValueDomain operator()(DOM::BinaryConditionalFormatOperator const& condition) const {
    auto const lower = evaluateNumber(condition.getFirstArgument());
    auto const upper = evaluateNumber(condition.getSecondArgument());
    bool const isBetween = condition.getType() == DOM::BinaryConditionalFormatType::Between;
    return isBetween && lower && upper
               ? ValueDomain(NumberInterval{.lower = *lower, .upper = *upper})
               : ValueDomain();
  }

  ValueDomain operator()(DOM::TextConditionalFormatOperator const& condition) const {
    auto const* const text = boost::get<std::string>(&condition.getArgument());
    return text == nullptr || condition.getType() == TextType::NotContains
               ? ValueDomain()
               : ValueDomain(TextPattern{condition.getType(), *text});
  }

  template <class OtherCondition>
  ValueDomain operator()(OtherCondition const& /*condition*/) const {
    return {};
  }

private:
  [[nodiscard]] std::optional<double> evaluateNumber(Expr const& expr) const {
    auto const value = evaluateConstant(expr, _provider, _sheet.getTable());
    auto const number = value ? FormulaModel::asFormulaNumberOpt(*value) : boost::none;
    return number ? std::optional(number->value.get()) : std::nullopt;
  }

  CheckedSheet const& _sheet;
  Formulas::ContextProvider const& _provider;
};

bool isInside(NumberInterval const& inner, NumberInterval const& outer) noexcept {
  bool const lowerFits =
      inner.lower > outer.lower ||
      (inner.lower == outer.lower && (outer.lowerIsInside || !inner.lowerIsInside));
  bool const upperFits =
      inner.upper < outer.upper ||
      (inner.upper == outer.upper && (outer.upperIsInside || !inner.upperIsInside));
  return lowerFits && upperFits;
}

bool isInside(TextPattern const& inner, TextPattern const& outer) {
  switch (outer.type) {
    case TextType::Contains:
      return inner.text.find(outer.text) != std::string::npos;
    case TextType::BeginsWith:
      return inner.type == TextType::BeginsWith && inner.text.starts_with(outer.text);
    case TextType::EndsWith:
      return inner.type == TextType::EndsWith && inner.text.ends_with(outer.text);
    default:
      return false;
  }
}

}  // namespace

ValueDomain findDomain(CheckedRule const& rule, CheckedSheet const& sheet,
                       Formulas::ContextProvider const& provider) {
  return boost::apply_visitor(DomainFinder(sheet, provider), rule.getCondition());
}

bool isInside(ValueDomain const& inner, ValueDomain const& outer) {
  if (auto const* const interval = std::get_if<NumberInterval>(&inner)) {
    auto const* const other = std::get_if<NumberInterval>(&outer);
    return other != nullptr && isInside(*interval, *other);
  }
  auto const* const pattern = std::get_if<TextPattern>(&inner);
  auto const* const other = std::get_if<TextPattern>(&outer);
  return pattern != nullptr && other != nullptr && isInside(*pattern, *other);
}

}  // namespace Zorv::Analysis
